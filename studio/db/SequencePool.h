#pragma once

#include <QHash>
#include <QList>
#include <QString>

namespace Orvane::Studio {

class SqlConnection;

// Values of PostgreSQL sequences drawn ahead with nextval, many per round trip, for one
// connection. A value nextval handed out is never handed out again, whatever other sessions do
// and whether or not the transaction that drew it commits, so the values drawn stay good across
// transactions, rollbacks and reconnections; those never used leave gaps, as a sequence's own
// cache does. Each draw takes twice as many as the last, up to a bound, so a session that needs
// few ids wastes few.
class SequencePool {
public:
    explicit SequencePool(SqlConnection& connection)
        : m_connection(connection) {}

    // The next value of the sequence, a plain lower-case name.
    qint32 Next(const QString& sequence);

private:
    struct Drawn {
        QList<qint32> values;
        qsizetype next = 0;
        qint32 batch = 1;
    };

    void draw(const QString& sequence, Drawn& drawn);

    SqlConnection& m_connection;
    QHash<QString, Drawn> m_drawn;
};

} // namespace Orvane::Studio
