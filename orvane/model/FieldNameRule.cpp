#include "orvane/model/FieldNameRule.h"

namespace Orvane::mOrvane {

namespace {

bool isAsciiLetter(QChar c) {
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

bool isAsciiDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

} // namespace

bool FollowsFieldNameRule(const QString& name) {
    if (name.isEmpty())
        return false;
    const QChar first = name.front();
    if (first != QLatin1Char('_') && !isAsciiLetter(first))
        return false;
    for (qsizetype i = 1; i < name.size(); ++i) {
        const QChar c = name.at(i);
        if (c != QLatin1Char('_') && c != QLatin1Char('%') && !isAsciiLetter(c) && !isAsciiDigit(c))
            return false;
    }
    return true;
}

} // namespace Orvane::mOrvane
