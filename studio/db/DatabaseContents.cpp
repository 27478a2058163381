#include "studio/db/DatabaseContents.h"

#include "studio/db/DatabaseSchema.h"
#include "studio/db/SqlConnection.h"

#include <QSet>

namespace Orvane::Studio {

DatabaseContents DatabaseContents::Of(SqlConnection& connection) {
    const QSqlDatabase database = connection.Database();
    QSet<QString> present;
    for (const QString& name : database.tables(QSql::Tables) + database.tables(QSql::Views))
        present.insert(name.toLower());

    DatabaseContents contents;
    const QStringList orvane = DatabaseSchema::Tables(connection.Backend());
    for (const QString& table : orvane) {
        if (!present.contains(table))
            contents.m_missing << table;
    }
    if (contents.m_missing.isEmpty())
        contents.m_kind = Kind::Orvane;
    else if (present.isEmpty())
        contents.m_kind = Kind::Empty;
    else if (contents.m_missing.size() < orvane.size())
        contents.m_kind = Kind::Partial;
    else
        contents.m_kind = Kind::Foreign;
    return contents;
}

QString DatabaseContents::Refusal(const QString& databaseShown) const {
    if (m_kind == Kind::Partial)
        return tr("Cannot use %1: it holds only some of Orvane's tables, or other tables of the "
                  "same names; missing: %2. It was left unchanged.")
            .arg(databaseShown, m_missing.join(QStringLiteral(", ")));
    return tr("Cannot use %1: it is not empty, it holds other tables and none of Orvane's. It "
              "was left unchanged.")
        .arg(databaseShown);
}

QString DatabaseContents::Question(const QString& databaseShown) {
    return tr("Add Orvane's tables and the demo dictionary to %1? It is not empty: it holds "
              "other tables and none of Orvane's.")
        .arg(databaseShown);
}

QString DatabaseContents::OdbcRefusal(const QString& databaseShown) {
    return tr("Cannot use %1: it has no Orvane tables (eds_column and the others). Databases "
              "reached over ODBC are used as they are, never set up.")
        .arg(databaseShown);
}

} // namespace Orvane::Studio
