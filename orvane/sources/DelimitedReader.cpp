#include "orvane/sources/DelimitedReader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <csv.h>

#include <cstring>
#include <memory>
#include <utility>

namespace Orvane {

namespace {

// The first block is small, as a preview needs only the head; later ones are larger.
constexpr qint64 FirstBlockSize = 16 * 1024;
constexpr qint64 BlockSize = 256 * 1024;
constexpr char Bom[] = "\xEF\xBB\xBF";

QString tr(const char* text) {
    return QCoreApplication::translate("Orvane::DelimitedReader", text);
}

// When a blank or a tab is the delimiter, blanks are data: libcsv must not trim them off.
int noSpace(unsigned char) {
    return 0;
}

// Follows UTF-8 sequences across blocks; any broken sequence means the file is not UTF-8.
class Utf8Check {
public:
    void Feed(const char* data, qint64 length) {
        qint64 i = 0;
        while (i < length && m_valid) {
            // Plain ASCII, the usual content, is passed eight bytes at a time.
            if (m_pending == 0 && i + 8 <= length) {
                quint64 word;
                std::memcpy(&word, data + i, 8);
                if ((word & 0x8080808080808080ull) == 0) {
                    i += 8;
                    continue;
                }
            }
            step(static_cast<unsigned char>(data[i++]));
        }
    }
    // A sequence cut by the end of what was read does not count against the file.
    bool Valid() const { return m_valid; }

private:
    void step(unsigned char byte) {
        if (m_pending > 0) {
            m_valid = (byte & 0xC0) == 0x80;
            --m_pending;
        } else if (byte >= 0x80) {
            m_pending = byte >= 0xF0 && byte <= 0xF4   ? 3
                        : byte >= 0xE0 && byte <= 0xEF ? 2
                        : byte >= 0xC2 && byte <= 0xDF ? 1
                                                       : -1;
            m_valid = m_pending > 0;
        }
    }
    int m_pending = 0;
    bool m_valid = true;
};

struct ParseState {
    RecordSink& sink;
    bool stopped = false;
};

void fieldDone(void* data, std::size_t length, void* state) {
    auto* parse = static_cast<ParseState*>(state);
    if (!parse->stopped)
        parse->sink.Field(static_cast<const char*>(data), length);
}

void recordDone(int, void* state) {
    auto* parse = static_cast<ParseState*>(state);
    if (!parse->stopped)
        parse->stopped = !parse->sink.EndRecord();
}

struct ParserFree {
    void operator()(csv_parser* parser) const {
        csv_free(parser);
        delete parser;
    }
};

} // namespace

DelimitedReader::DelimitedReader(QString path, QChar delimiter, QChar quote)
    : m_path(std::move(path))
    , m_delimiter(delimiter)
    , m_quote(quote) {}

QChar DelimitedReader::DelimiterChar(const QString& storedDelimiter) {
    return storedDelimiter.isEmpty() ? QLatin1Char('\t') : storedDelimiter.at(0);
}

QString DelimitedReader::Decode(const char* data, std::size_t length) const {
    const auto size = static_cast<qsizetype>(length);
    return m_latin1 ? QString::fromLatin1(data, size) : QString::fromUtf8(data, size);
}

bool DelimitedReader::openError(const QString& reason) {
    m_error = reason;
    return false;
}

bool DelimitedReader::Scan(RecordSink& sink, const std::atomic_bool* cancel,
                           const Progress& progress) {
    m_error.clear();
    m_latin1 = m_reachedEnd = false;
    const QFileInfo info(m_path);
    if (m_path.trimmed().isEmpty())
        return openError(tr("No file name is given."));
    if (!info.exists())
        return openError(tr("The file \"%1\" does not exist.").arg(m_path));
    if (info.isDir())
        return openError(tr("\"%1\" is a folder, not a file.").arg(m_path));
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return openError(tr("The file \"%1\" cannot be read: %2").arg(m_path, file.errorString()));

    std::unique_ptr<csv_parser, ParserFree> parser(new csv_parser);
    csv_init(parser.get(), 0);
    csv_set_delim(parser.get(), static_cast<unsigned char>(m_delimiter.toLatin1()));
    csv_set_quote(parser.get(), static_cast<unsigned char>(m_quote.toLatin1()));
    if (m_delimiter == QLatin1Char(' ') || m_delimiter == QLatin1Char('\t'))
        csv_set_space_func(parser.get(), noSpace);

    ParseState state{sink};
    Utf8Check utf8;
    QByteArray block(BlockSize, Qt::Uninitialized);
    qint64 done = 0;
    const qint64 total = file.size();
    bool first = true;
    while (!state.stopped) {
        if (cancel && cancel->load())
            return openError(tr("Reading was cancelled."));
        const qint64 got = file.read(block.data(), first ? FirstBlockSize : BlockSize);
        if (got < 0)
            return openError(
                tr("The file \"%1\" cannot be read: %2").arg(m_path, file.errorString()));
        if (got == 0)
            break;
        const char* data = block.constData();
        qint64 length = got;
        if (first && length >= 3 && std::memcmp(data, Bom, 3) == 0) {
            data += 3;
            length -= 3;
        }
        first = false;
        if (std::memchr(data, '\0', static_cast<std::size_t>(length)))
            return openError(
                tr("The file \"%1\" holds binary data, not delimited text.").arg(m_path));
        utf8.Feed(data, length);
        if (csv_parse(parser.get(), data, static_cast<std::size_t>(length), fieldDone, recordDone,
                      &state) != static_cast<std::size_t>(length))
            return openError(
                tr("The file \"%1\" cannot be split: %2")
                    .arg(m_path, QString::fromLatin1(csv_strerror(csv_error(parser.get())))));
        done += got;
        if (progress)
            progress(done, total);
        if (m_byteLimit > 0 && done >= m_byteLimit)
            break;
    }
    m_reachedEnd = !state.stopped && file.atEnd();
    if (m_reachedEnd)
        csv_fini(parser.get(), fieldDone, recordDone, &state);
    m_latin1 = !utf8.Valid();
    return true;
}

} // namespace Orvane
