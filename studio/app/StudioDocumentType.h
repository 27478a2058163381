#pragma once

#include "orvane/host/IDocumentType.h"

#include <memory>

namespace Orvane::Studio {

// One of the Studio's two kinds of document.
class StudioDocumentType : public IDocumentType {
public:
    static std::shared_ptr<StudioDocumentType> Ascii();
    static std::shared_ptr<StudioDocumentType> Odbc();
    // The type stored in the document row ("ASCII Data Source" or "ODBC Data Source"); null for
    // any other name.
    static std::shared_ptr<StudioDocumentType> ByName(const QString& typeName);

    StudioDocumentType(QString typeName, QString edsType);

    QString TypeName() const override { return m_typeName; }
    QString AppName() const override { return m_typeName; }
    QString DisplayName() const override { return m_typeName; }
    // The EDS type code kept in the document row.
    const QString& EdsType() const { return m_edsType; }
    bool IsOdbc() const;

private:
    QString m_typeName;
    QString m_edsType;
};

} // namespace Orvane::Studio
