#pragma once

#include "orvane/sources/DelimitedReader.h"
#include "orvane/sources/DetectedColumn.h"
#include "orvane/sources/ValueKind.h"

#include <QByteArray>
#include <QList>

#include <vector>

namespace Orvane {

// What a file's first records say about its columns.
struct ColumnDetection {
    DetectedColumns columns;
    // The first record names the columns.
    bool hasHeader = false;
    bool latin1 = false;
    // Data records looked at (the header not counted).
    qint32 records = 0;
    // Why the file could not be read; empty when it could.
    QString error;
};

// Finds the columns of a delimited file: the names from a header row (Column1..n without one),
// positions 1..n and each column's type from a sample of records.
class ColumnDetector : public RecordSink {
public:
    static constexpr qint32 SampleRecords = 1000;

    explicit ColumnDetector(qint32 sampleRecords = SampleRecords);

    static ColumnDetection Detect(const QString& path, const QString& storedDelimiter,
                                  qint32 sampleRecords = SampleRecords);

    void Field(const char* data, std::size_t length) override;
    bool EndRecord() override;

    // The result once the reader is done; reader decodes the header names.
    ColumnDetection Result(const DelimitedReader& reader) const;

private:
    bool headerLooksLikeNames() const;

    qint32 m_sampleRecords;
    qint32 m_record = 0;
    qint32 m_field = 0;
    QList<QByteArray> m_first;
    QList<ValueKind> m_firstKinds;
    std::vector<KindTally> m_tallies;
};

} // namespace Orvane
