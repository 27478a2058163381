#include "studio/app/StudioDocumentType.h"

namespace Orvane::Studio {

std::shared_ptr<StudioDocumentType> StudioDocumentType::Ascii() {
    static const auto type = std::make_shared<StudioDocumentType>(
        QStringLiteral("ASCII Data Source"), QStringLiteral("A"));
    return type;
}

std::shared_ptr<StudioDocumentType> StudioDocumentType::Odbc() {
    static const auto type = std::make_shared<StudioDocumentType>(
        QStringLiteral("ODBC Data Source"), QStringLiteral("O"));
    return type;
}

std::shared_ptr<StudioDocumentType> StudioDocumentType::ByName(const QString& typeName) {
    if (typeName == Ascii()->TypeName())
        return Ascii();
    if (typeName == Odbc()->TypeName())
        return Odbc();
    return nullptr;
}

StudioDocumentType::StudioDocumentType(QString typeName, QString edsType)
    : m_typeName(std::move(typeName))
    , m_edsType(std::move(edsType)) {}

bool StudioDocumentType::IsOdbc() const {
    return m_typeName == Odbc()->TypeName();
}

} // namespace Orvane::Studio
