#include "orvane/sources/ColumnDetector.h"
#include "orvane/sources/SourceHead.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

struct FileCase {
    const char* name;
    QByteArray bytes;
    QString delimiter;
    // Records joined with "|" and fields with ";".
    QString head;
    QString types;
    bool header;
    bool latin1;
    QString error;
};

QString joined(const SourceHead& head) {
    QStringList records;
    for (const QStringList& record : head.records)
        records << record.join(u';');
    return records.join(u'|');
}

QString typeCodes(const ColumnDetection& detection) {
    QString codes;
    for (const DetectedColumn& column : detection.columns)
        codes += column.typeCode;
    return codes;
}

} // namespace

TEST(SourceReadingTest, FilesReadAsTheyWillLoad) {
    const FileCase cases[] = {
        {"quoted", "id,name,when\n1,\"a, b\",2024-01-31\n2,\"say \"\"hi\"\"\",31/01/2024 10:15\n",
         ",", "id;name;when|1;a, b;2024-01-31|2;say \"hi\";31/01/2024 10:15", "ISD", true, false,
         ""},
        {"newline in quotes", "a\tb\n1.5\t\"two\nlines\"\n", "\t", "a;b|1.5;two\nlines", "FS", true,
         false, ""},
        {"bom", "\xEF\xBB\xBFx:y\r\n1:2\r\n", ":", "x;y|1;2", "II", true, false, ""},
        {"latin1", "caf\xE9 1\n", " ", QStringLiteral("caf\u00E9;1"), "SI", false, true, ""},
        {"ragged, no header", "1,2,3\n4,5\n6.5,,7\n", ",", "1;2;3|4;5|6.5;;7", "FII", false, false,
         ""},
        {"header only", "a/b/c\n", "/", "a;b;c", "SSS", true, false, ""},
        {"empty", "", ",", "", "", false, false, ""},
        {"binary", QByteArray("PK\x03\x04\0\0", 6), ",", "", "", false, false, "binary"},
        {"no line break", QByteArray(9 << 20, 'x'), ",", "", "S", true, false, "ends within"},
    };
    QTemporaryDir dir;
    for (const FileCase& c : cases) {
        SCOPED_TRACE(c.name);
        const QString path = dir.filePath(QString::fromLatin1(c.name));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(c.bytes);
        file.close();

        const SourceHead head = ReadSourceHead(path, c.delimiter, 20);
        EXPECT_EQ(joined(head), c.head);
        EXPECT_EQ(head.latin1, c.latin1);
        EXPECT_TRUE(c.error.isEmpty() ? head.error.isEmpty() : head.error.contains(c.error))
            << head.error.toStdString();

        const ColumnDetection detection = ColumnDetector::Detect(path, c.delimiter);
        EXPECT_EQ(typeCodes(detection), c.types);
        EXPECT_EQ(detection.hasHeader, c.header);
    }
    EXPECT_TRUE(ReadSourceHead(dir.path(), ",", 20).error.contains("folder"));
    EXPECT_TRUE(ReadSourceHead(dir.filePath("none"), ",", 20).error.contains("does not exist"));
}

TEST(SourceReadingTest, ValueKinds) {
    const std::pair<const char*, ValueKind> values[] = {
        {" -42 ", ValueKind::Integer},
        {"+3.", ValueKind::Float},
        {"1e-5", ValueKind::Float},
        {".5", ValueKind::Float},
        {"2024-02-30", ValueKind::Date},
        {"2024-13-01", ValueKind::Text},
        {"12/31/2024", ValueKind::Date},
        {"31.12.2024 23:59:59.5", ValueKind::Date},
        {"2024-01-01T00:00Z", ValueKind::Date},
        {"1/2/2024 3:04 PM", ValueKind::Date},
        {"2024-01-01 25", ValueKind::Text},
        {"1-2", ValueKind::Text},
        {"e5", ValueKind::Text},
        {"", ValueKind::Empty},
    };
    for (const auto& [value, kind] : values)
        EXPECT_EQ(ClassifyValue(QString::fromLatin1(value)), kind) << value;
}
