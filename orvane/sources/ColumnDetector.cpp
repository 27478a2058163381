#include "orvane/sources/ColumnDetector.h"

#include <QSet>

namespace Orvane {

ColumnDetector::ColumnDetector(qint32 sampleRecords)
    : m_sampleRecords(sampleRecords) {}

ColumnDetection ColumnDetector::Detect(const QString& path, const QString& storedDelimiter,
                                       qint32 sampleRecords) {
    DelimitedReader reader(path, DelimitedReader::DelimiterChar(storedDelimiter));
    ColumnDetector detector(sampleRecords);
    if (!reader.Scan(detector)) {
        ColumnDetection failed;
        failed.error = reader.ErrorString();
        return failed;
    }
    return detector.Result(reader);
}

void ColumnDetector::Field(const char* data, std::size_t length) {
    if (m_record == 0) {
        m_first.append(QByteArray(data, static_cast<qsizetype>(length)));
        m_firstKinds.append(ClassifyValue(data, length));
    } else {
        if (static_cast<std::size_t>(m_field) >= m_tallies.size())
            m_tallies.resize(static_cast<std::size_t>(m_field) + 1);
        KindTally& tally = m_tallies[static_cast<std::size_t>(m_field)];
        if (!tally.Settled())
            tally.Add(ClassifyValue(data, length));
    }
    ++m_field;
}

bool ColumnDetector::EndRecord() {
    m_field = 0;
    ++m_record;
    // One more than the sample: the first record may be the header.
    return m_record <= m_sampleRecords;
}

bool ColumnDetector::headerLooksLikeNames() const {
    QSet<QByteArray> seen;
    for (qsizetype i = 0; i < m_first.size(); ++i) {
        const QByteArray name = m_first.at(i).trimmed();
        if (m_firstKinds.at(i) != ValueKind::Text || seen.contains(name))
            return false;
        seen.insert(name);
    }
    return !m_first.isEmpty();
}

ColumnDetection ColumnDetector::Result(const DelimitedReader& reader) const {
    ColumnDetection result;
    result.latin1 = reader.Latin1();
    result.hasHeader = headerLooksLikeNames();
    QList<KindTally> tallies(m_tallies.begin(), m_tallies.end());
    const qsizetype count = std::max(m_first.size(), tallies.size());
    tallies.resize(count);
    if (!result.hasHeader) {
        for (qsizetype i = 0; i < m_first.size(); ++i)
            tallies[i].Add(m_firstKinds.at(i));
    }
    result.records = std::max(0, m_record - (result.hasHeader ? 1 : 0));
    for (qsizetype i = 0; i < count; ++i) {
        DetectedColumn column;
        column.position = static_cast<qint32>(i + 1);
        if (result.hasHeader && i < m_first.size())
            column.name = reader
                              .Decode(m_first.at(i).constData(),
                                      static_cast<std::size_t>(m_first.at(i).size()))
                              .trimmed();
        if (column.name.isEmpty())
            column.name = QStringLiteral("Column%1").arg(column.position);
        column.typeCode = tallies.at(i).TypeCode();
        result.columns.append(column);
    }
    return result;
}

} // namespace Orvane
