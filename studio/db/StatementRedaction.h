#pragma once

#include <QString>
#include <QStringList>

namespace Orvane::Studio {

// What an error may show of a statement: the values it gives password columns (DB_Password,
// in a SET or WHERE "name = value" or an INSERT's column and value lists) become ***, in the
// statement and in the database's message, which may quote them. The statement sent is unchanged.
class StatementRedaction {
public:
    explicit StatementRedaction(const QString& statement);

    const QString& Statement() const { return m_statement; }
    QString Hide(QString message) const;

private:
    QString m_statement;
    QStringList m_secrets;
};

} // namespace Orvane::Studio
