#pragma once

#include <QList>
#include <QString>

class QWidget;

namespace Orvane {
class CDataSourcesData;
class IQueryService;
} // namespace Orvane

namespace Orvane::Studio {

// The texts of a document that the Studio keeps in its own rows, each with the room its
// database column has: a settings box takes no more than fits, and a text that does not fit
// (from an import, or a host that set it) is refused before a save writes anything, naming the
// field, instead of failing on the server with its own message.
class StoredTexts {
public:
    explicit StoredTexts(IQueryService& query);

    // Limits each text box of a settings editor to its column's width.
    void LimitBoxes(QWidget& settingsEditor) const;
    // An Orvane::Error naming the first text of the document that is longer than its column, or
    // required and empty.
    void Check(const CDataSourcesData& document, bool odbc) const;

private:
    struct Text {
        QString label;
        QString table;
        QString column;
        QString box;
        const QString& (CDataSourcesData::*value)() const;
        bool ascii;
        bool odbc;
        // The source cannot be read without it: blanks alone do not count.
        bool required;
    };
    static const QList<Text>& texts();
    qint32 widthOf(const Text& text) const;

    IQueryService& m_query;
};

} // namespace Orvane::Studio
