#pragma once

#include "orvane/exchange/EdsDefinition.h"

#include <QByteArray>

namespace Orvane {

// The JSON form of a data source, "orvane-eds/1". Writing is canonical: members in a fixed
// (alphabetical) order, four-blank indentation, a final line break, so that two exports of one
// definition are the same bytes. Reading checks the form alone (no database): every problem is
// listed with its JSON path, and a file with any problem yields no definition.
class DefinitionJson {
public:
    static inline const QString Format = QStringLiteral("orvane-eds/1");

    struct ReadResult {
        std::optional<EdsDefinition> definition;
        QList<ExchangeProblem> problems;
    };

    static QByteArray Write(const EdsDefinition& definition);
    static ReadResult Read(const QByteArray& text);
};

} // namespace Orvane
