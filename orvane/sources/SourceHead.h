#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

namespace Orvane {

// The first records of a delimited file, split and decoded as they will be loaded.
struct SourceHead {
    QList<QStringList> records;
    bool latin1 = false;
    // The file ended within the records asked for.
    bool wholeFile = false;
    // Why the file could not be read; empty when it could.
    QString error;

    // The number of fields of the widest record.
    qint32 Width() const;
    // 1-based numbers of the records whose field count differs from the first record's.
    QList<qint32> RaggedRecords() const;
};

// Reads up to maxRecords records; progress gets the bytes read so far and the file's size.
SourceHead ReadSourceHead(const QString& path, const QString& storedDelimiter, qint32 maxRecords,
                          const std::atomic_bool* cancel = nullptr,
                          const std::function<void(qint64, qint64)>& progress = {});

} // namespace Orvane
