#pragma once

#include <QString>

#include <cstddef>

namespace Orvane {

// What a value in a source looks like, from the narrowest kind to free text.
enum class ValueKind { Empty, Integer, Float, Date, Text };

// The kind of a value's bytes; surrounding blanks are ignored. Dates are the common forms:
// year-month-day with "-", "/" or ".", day and month before a four-digit year, each with an
// optional time (hours and minutes, seconds, fractions) after a blank or "T".
ValueKind ClassifyValue(const char* data, std::size_t length);
ValueKind ClassifyValue(const QString& value);

// The kinds seen in one column, folded into the column's type.
class KindTally {
public:
    void Add(ValueKind kind) { m_seen |= 1u << static_cast<unsigned>(kind); }
    // Text was seen: no further value can change the type.
    bool Settled() const { return (m_seen & (1u << static_cast<unsigned>(ValueKind::Text))) != 0; }
    // The one-letter type code: "I", "F", "D", and "S" for text, mixed dates and numbers, or no
    // value at all.
    QString TypeCode() const;

private:
    unsigned m_seen = 0;
};

} // namespace Orvane
