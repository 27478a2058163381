#include "orvane/sources/ColumnDetector.h"
#include "orvane/sources/SourceHead.h"

#include <QFile>
#include <QTemporaryFile>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace Orvane;

namespace {

const char Delimiters[] = {' ', ':', ',', '/', '\t'};

QString scratchFile() {
    static QTemporaryFile file;
    if (!file.isOpen() && !file.open())
        std::abort();
    return file.fileName();
}

} // namespace

// Any bytes, with any of the five delimiters (the first byte chooses), read as a head and as a
// column detection without a crash: a head of at most the records asked for, and columns in
// order with one of the type codes, or one error said the same way by both.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const QString delimiter = QString(QLatin1Char(Delimiters[data[0] % 5]));
    const QString path = scratchFile();
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            std::abort();
        file.write(reinterpret_cast<const char*>(data + 1), static_cast<qint64>(size - 1));
    }
    const SourceHead head = ReadSourceHead(path, delimiter, 20);
    if (head.records.size() > 20 || (!head.error.isEmpty() && !head.records.isEmpty()))
        std::abort();
    const ColumnDetection detection = ColumnDetector::Detect(path, delimiter, 50);
    if (detection.error != head.error)
        std::abort();
    for (qsizetype i = 0; i < detection.columns.size(); ++i) {
        const DetectedColumn& column = detection.columns.at(i);
        if (column.position != i + 1 || column.name.isEmpty() ||
            !QStringLiteral("IFDS").contains(column.typeCode) || column.typeCode.size() != 1)
            std::abort();
    }
    return 0;
}
