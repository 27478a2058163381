#pragma once

#include <QString>

namespace Orvane {

// The host's document type ("ASCII Data Source" or "ODBC Data Source").
class IDocumentType {
public:
    virtual ~IDocumentType() = default;

    virtual QString TypeName() const = 0;
    virtual QString AppName() const = 0;
    virtual QString DisplayName() const = 0;
};

} // namespace Orvane
