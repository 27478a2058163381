#include "orvane/sources/ValueKind.h"

#include "orvane/model/DataTypes.h"

namespace Orvane {

namespace {

struct Cursor {
    const char* at;
    const char* end;

    bool done() const { return at == end; }
    char peek() const { return at == end ? '\0' : *at; }
    bool take(char c) {
        if (peek() != c)
            return false;
        ++at;
        return true;
    }
    // The value of up to maxDigits digits; -1 when fewer than minDigits are there.
    int number(int minDigits, int maxDigits) {
        int value = 0;
        int count = 0;
        while (count < maxDigits && !done() && *at >= '0' && *at <= '9') {
            value = value * 10 + (*at - '0');
            ++at;
            ++count;
        }
        return count >= minDigits ? value : -1;
    }
    int digits() {
        const char* start = at;
        while (!done() && *at >= '0' && *at <= '9')
            ++at;
        return static_cast<int>(at - start);
    }
};

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

ValueKind number(Cursor c) {
    if (!c.take('-'))
        c.take('+');
    const int whole = c.digits();
    const bool point = c.take('.');
    const int fraction = point ? c.digits() : 0;
    if (whole + fraction == 0)
        return ValueKind::Text;
    bool exponent = false;
    if (c.peek() == 'e' || c.peek() == 'E') {
        ++c.at;
        if (!c.take('-'))
            c.take('+');
        if (c.digits() == 0)
            return ValueKind::Text;
        exponent = true;
    }
    if (!c.done())
        return ValueKind::Text;
    return point || exponent ? ValueKind::Float : ValueKind::Integer;
}

bool validDay(int month, int day) {
    return month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

bool time(Cursor& c) {
    if (c.number(1, 2) < 0 || !c.take(':') || c.number(2, 2) < 0)
        return false;
    if (c.take(':')) {
        if (c.number(2, 2) < 0)
            return false;
        if (c.take('.') && c.digits() == 0)
            return false;
    }
    if (c.take(' '))
        return (c.take('A') || c.take('P')) && c.take('M') && c.done();
    c.take('Z');
    return c.done();
}

bool date(Cursor c) {
    const char* start = c.at;
    int first = c.number(1, 4);
    const int firstDigits = static_cast<int>(c.at - start);
    const char separator = c.peek();
    if (first < 0 || (separator != '-' && separator != '/' && separator != '.'))
        return false;
    ++c.at;
    const int second = c.number(1, 2);
    if (second < 0 || !c.take(separator))
        return false;
    bool valid = false;
    if (firstDigits == 4) {
        valid = validDay(second, c.number(1, 2));
    } else if (firstDigits <= 2) {
        const int third = c.number(4, 4);
        // Day-month and month-day orders are both common.
        valid = third >= 0 && (validDay(second, first) || validDay(first, second));
    }
    if (!valid)
        return false;
    if (c.done())
        return true;
    if (!c.take(' ') && !c.take('T'))
        return false;
    return time(c);
}

} // namespace

ValueKind ClassifyValue(const char* data, std::size_t length) {
    Cursor c{data, data + length};
    while (!c.done() && isBlank(*c.at))
        ++c.at;
    while (c.end > c.at && isBlank(c.end[-1]))
        --c.end;
    if (c.done())
        return ValueKind::Empty;
    const ValueKind kind = number(c);
    if (kind != ValueKind::Text)
        return kind;
    return date(c) ? ValueKind::Date : ValueKind::Text;
}

ValueKind ClassifyValue(const QString& value) {
    const QByteArray bytes = value.toUtf8();
    return ClassifyValue(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

QString KindTally::TypeCode() const {
    const auto seen = [this](ValueKind kind) {
        return (m_seen & (1u << static_cast<unsigned>(kind))) != 0;
    };
    const bool numbers = seen(ValueKind::Integer) || seen(ValueKind::Float);
    QString word = QStringLiteral("String");
    if (seen(ValueKind::Text) || (numbers && seen(ValueKind::Date)))
        word = QStringLiteral("String");
    else if (seen(ValueKind::Date))
        word = QStringLiteral("Date");
    else if (seen(ValueKind::Float))
        word = QStringLiteral("Float");
    else if (seen(ValueKind::Integer))
        word = QStringLiteral("Integer");
    return mOrvane::DataTypeCode(word);
}

} // namespace Orvane
