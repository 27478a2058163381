#include "studio/app/StoredTexts.h"

#include "orvane/host/IQueryService.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesData.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QWidget>

namespace Orvane::Studio {

StoredTexts::StoredTexts(IQueryService& query)
    : m_query(query) {}

const QList<StoredTexts::Text>& StoredTexts::texts() {
    const QString document = QStringLiteral("eds_document");
    const QString ascii = QStringLiteral("eds_ascii_file");
    const QString odbc = QStringLiteral("eds_odbc_file");
    static const QList<Text> all{
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Name")), document, QStringLiteral("name"),
         QString(), &CDataSourcesData::DocName, true, true, false},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Description")), document,
         QStringLiteral("description"), QStringLiteral("txtDescription"),
         &CDataSourcesData::DocDescription, true, true, false},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "File Name")), ascii,
         QStringLiteral("filename"), QStringLiteral("txtFile"), &CDataSourcesData::FileName, true,
         false, true},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Server")), odbc,
         QStringLiteral("db_server"), QStringLiteral("txtDB_Server"), &CDataSourcesData::Server,
         false, true, true},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Database")), odbc,
         QStringLiteral("db_database"), QStringLiteral("txtDB_Database"), &CDataSourcesData::Schema,
         false, true, false},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Table")), odbc,
         QStringLiteral("table_name"), QStringLiteral("txtDB_Table"), &CDataSourcesData::Table,
         false, true, true},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "UserId")), odbc,
         QStringLiteral("db_userid"), QStringLiteral("txtDB_UserId"), &CDataSourcesData::UserId,
         false, true, false},
        {QStringLiteral(QT_TRANSLATE_NOOP("StoredTexts", "Password")), odbc,
         QStringLiteral("db_password"), QStringLiteral("txtDB_Password"),
         &CDataSourcesData::Password, false, true, false},
    };
    return all;
}

// 0 when the database does not say (the column then takes what it is given).
qint32 StoredTexts::widthOf(const Text& text) const {
    return m_query.ColumnWidth(text.table, text.column);
}

void StoredTexts::LimitBoxes(QWidget& settingsEditor) const {
    for (const Text& text : texts()) {
        if (text.box.isEmpty())
            continue;
        auto* box = settingsEditor.findChild<QLineEdit*>(text.box);
        const qint32 width = box ? widthOf(text) : 0;
        if (width > 0)
            box->setMaxLength(width);
    }
}

void StoredTexts::Check(const CDataSourcesData& document, bool odbc) const {
    for (const Text& text : texts()) {
        if (!(odbc ? text.odbc : text.ascii))
            continue;
        const QString& value = (document.*text.value)();
        if (text.required && value.trimmed().isEmpty()) {
            throw Error(
                QCoreApplication::translate("StoredTexts", "The %1 must not be blank.")
                    .arg(QCoreApplication::translate("StoredTexts", qUtf8Printable(text.label))));
        }
        const qsizetype length = value.size();
        const qint32 width = widthOf(text);
        if (width > 0 && length > width) {
            throw Error(
                QCoreApplication::translate("StoredTexts",
                                            "The %1 has %2 characters; it may have at "
                                            "most %3.")
                    .arg(QCoreApplication::translate("StoredTexts", qUtf8Printable(text.label)))
                    .arg(length)
                    .arg(width));
        }
    }
}

} // namespace Orvane::Studio
