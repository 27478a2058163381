#pragma once

#include <QChar>
#include <QString>

#include <atomic>
#include <cstddef>
#include <functional>

namespace Orvane {

// Receives what DelimitedReader splits: the raw bytes of each field (BOM stripped, not decoded)
// and the end of each record.
class RecordSink {
public:
    virtual ~RecordSink() = default;
    virtual void Field(const char* data, std::size_t length) = 0;
    // False stops the reading after this record.
    virtual bool EndRecord() = 0;
};

// Splits a delimited file into records with libcsv: the document's delimiter, a quote character
// around fields that hold delimiters, line breaks or doubled quotes. Reads in blocks and stops
// as soon as the sink has enough, so the head of a huge file costs as much as a small file.
class DelimitedReader {
public:
    // Called after each block with the bytes read so far and the file's size.
    using Progress = std::function<void(qint64 done, qint64 total)>;

    DelimitedReader(QString path, QChar delimiter, QChar quote = QLatin1Char('"'));

    // Feeds the file to the sink. False, with ErrorString() set, when the file cannot be read,
    // is not text, or the reading was cancelled.
    bool Scan(RecordSink& sink, const std::atomic_bool* cancel = nullptr,
              const Progress& progress = {});

    // Reading stops after this many bytes, wherever the records end; 0 reads to the end.
    void setByteLimit(qint64 bytes) { m_byteLimit = bytes; }

    QString ErrorString() const { return m_error; }
    // The bytes read are not valid UTF-8, so they are to be read as Latin-1.
    bool Latin1() const { return m_latin1; }
    // The whole file was read (the sink never stopped it).
    bool ReachedEnd() const { return m_reachedEnd; }

    // The delimiter a document stores, as one character; a tab when it is empty.
    static QChar DelimiterChar(const QString& storedDelimiter);
    // Decodes a field's bytes in the encoding the reading found.
    QString Decode(const char* data, std::size_t length) const;

private:
    bool openError(const QString& reason);

    QString m_path;
    QChar m_delimiter;
    QChar m_quote;
    QString m_error;
    bool m_latin1 = false;
    bool m_reachedEnd = false;
    qint64 m_byteLimit = 0;
};

} // namespace Orvane
