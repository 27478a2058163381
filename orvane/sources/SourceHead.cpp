#include "orvane/sources/SourceHead.h"

#include "orvane/sources/DelimitedReader.h"

#include <QCoreApplication>

namespace Orvane {

namespace {

constexpr qint64 HeadByteLimit = qint64(8) << 20;

// Keeps the raw fields; they are decoded once the encoding of the whole head is known.
class HeadSink : public RecordSink {
public:
    explicit HeadSink(qint32 maxRecords)
        : m_maxRecords(maxRecords) {}

    void Field(const char* data, std::size_t length) override {
        m_current.append(QByteArray(data, static_cast<qsizetype>(length)));
    }
    bool EndRecord() override {
        records.append(std::move(m_current));
        m_current = {};
        return records.size() < m_maxRecords;
    }

    QList<QList<QByteArray>> records;

private:
    qint32 m_maxRecords;
    QList<QByteArray> m_current;
};

} // namespace

qint32 SourceHead::Width() const {
    qsizetype width = 0;
    for (const QStringList& record : records)
        width = std::max(width, record.size());
    return static_cast<qint32>(width);
}

QList<qint32> SourceHead::RaggedRecords() const {
    QList<qint32> ragged;
    for (qsizetype i = 1; i < records.size(); ++i) {
        if (records.at(i).size() != records.first().size())
            ragged.append(static_cast<qint32>(i + 1));
    }
    return ragged;
}

SourceHead ReadSourceHead(const QString& path, const QString& storedDelimiter, qint32 maxRecords,
                          const std::atomic_bool* cancel,
                          const std::function<void(qint64, qint64)>& progress) {
    SourceHead head;
    if (maxRecords <= 0)
        return head;
    DelimitedReader reader(path, DelimitedReader::DelimiterChar(storedDelimiter));
    // A file without line breaks (or one huge quoted field) must not be read whole for a head.
    reader.setByteLimit(HeadByteLimit);
    HeadSink sink(maxRecords);
    if (!reader.Scan(sink, cancel, progress)) {
        head.error = reader.ErrorString();
        return head;
    }
    if (sink.records.isEmpty() && !reader.ReachedEnd()) {
        head.error = QCoreApplication::translate(
                         "Orvane::SourceHead",
                         "No record of \"%1\" ends within its first %2 MB: is it a delimited "
                         "text file?")
                         .arg(path)
                         .arg(HeadByteLimit >> 20);
        return head;
    }
    head.latin1 = reader.Latin1();
    head.wholeFile = reader.ReachedEnd();
    for (const QList<QByteArray>& raw : std::as_const(sink.records)) {
        QStringList record;
        record.reserve(raw.size());
        for (const QByteArray& field : raw)
            record.append(reader.Decode(field.constData(), static_cast<std::size_t>(field.size())));
        head.records.append(record);
    }
    return head;
}

} // namespace Orvane
