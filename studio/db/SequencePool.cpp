#include "studio/db/SequencePool.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"

namespace Orvane::Studio {

namespace {

// The most values one round trip draws: a new document of 10,000 columns takes 12 such draws.
constexpr qint32 LargestBatch = 1024;

} // namespace

qint32 SequencePool::Next(const QString& sequence) {
    Drawn& drawn = m_drawn[sequence];
    if (drawn.next == drawn.values.size())
        draw(sequence, drawn);
    return drawn.values[drawn.next++];
}

void SequencePool::draw(const QString& sequence, Drawn& drawn) {
    QSqlQuery& query =
        m_connection.RunPrepared(QStringLiteral("SELECT nextval(CAST(? AS regclass)) "
                                                "FROM generate_series(1, CAST(? AS integer))"),
                                 {sequence, drawn.batch},
                                 QStringLiteral("SELECT nextval('%1') FROM generate_series(1, %2)")
                                     .arg(sequence)
                                     .arg(drawn.batch));
    QList<qint32> values;
    values.reserve(drawn.batch);
    while (query.next())
        values.append(SqlLiterals::AsLong(query.value(0)));
    query.finish();
    if (values.isEmpty())
        throw Error(QStringLiteral("The sequence %1 gave no value.").arg(sequence));
    drawn.values = std::move(values);
    drawn.next = 0;
    drawn.batch = qMin(drawn.batch * 2, LargestBatch);
}

} // namespace Orvane::Studio
