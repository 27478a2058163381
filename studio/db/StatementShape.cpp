#include "studio/db/StatementShape.h"

#include <algorithm>
#include <limits>

namespace Orvane::Studio {

namespace {

using Word = QLatin1StringView;

// A statement with more values, a long IN list, keeps its text: its shape seldom comes again,
// and binding its values costs more than the database's reading of them. (A list of whole
// numbers is one value.)
constexpr qsizetype MaxValues = 64;

// =, <>, !=, ^=, <, >, <= or >=, read character by character: every literal asks.
bool isComparisonOrAssignment(const SqlTokenList& tokens, qsizetype i) {
    if (i < 0 || tokens.Kind(i) != SqlTokenKind::Symbol)
        return false;
    const QStringView symbol = tokens.Text(i);
    const char16_t first = symbol[0].unicode();
    if (symbol.size() == 1)
        return first == u'=' || first == u'<' || first == u'>';
    const char16_t second = symbol[1].unicode();
    return (second == u'=' && (first == u'!' || first == u'^' || first == u'<' || first == u'>')) ||
           (first == u'<' && second == u'>');
}

// A literal that ends its operand: what follows cannot make it part of a larger expression.
bool endsOperand(const SqlTokenList& tokens, qsizetype i) {
    const qsizetype next = i + 1;
    return next >= tokens.Count() || tokens.Kind(next) == SqlTokenKind::Word ||
           tokens.IsSymbol(next, Word(",")) || tokens.IsSymbol(next, Word(")"));
}

bool isInt32(qlonglong value) {
    return value >= std::numeric_limits<qint32>::min() &&
           value <= std::numeric_limits<qint32>::max();
}

// A whole number as QString::number writes it: no plus sign, no leading zero, no "-0".
bool writtenAsItsValue(QStringView text) {
    const QStringView digits = text.startsWith(u'-') ? text.mid(1) : text;
    if (digits.isEmpty() ||
        (digits[0] == u'0' && (digits.size() > 1 || digits.size() < text.size())))
        return false;
    return std::all_of(digits.begin(), digits.end(),
                       [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// A column's name, qualified or not, that starts its condition, stands before the IN at token in:
// the list then cannot belong to a larger operand, and `= ANY(...)` in its place means the same.
bool followsColumn(const SqlTokenList& tokens, qsizetype in) {
    qsizetype name = in - 1;
    if (!tokens.IsName(name))
        return false;
    if (tokens.IsSymbol(name - 1, Word(".")) && tokens.IsName(name - 2))
        name -= 2;
    return tokens.IsSymbol(name - 1, Word("(")) || tokens.IsKeyword(name - 1, Word("WHERE")) ||
           tokens.IsKeyword(name - 1, Word("AND")) || tokens.IsKeyword(name - 1, Word("OR"));
}

// What follows the list's closing parenthesis at token close ends the condition, as what stands
// before the column starts it.
bool endsCondition(const SqlTokenList& tokens, qsizetype close) {
    const qsizetype next = close + 1;
    return next >= tokens.Count() || tokens.IsSymbol(next, Word(")")) ||
           tokens.IsKeyword(next, Word("AND")) || tokens.IsKeyword(next, Word("OR")) ||
           tokens.IsKeyword(next, Word("ORDER")) || tokens.IsKeyword(next, Word("GROUP"));
}

QString quoted(const QString& text) {
    QString escaped = text;
    escaped.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

} // namespace

StatementShape::StatementShape(const SqlTokenList& tokens, Binding binding)
    : m_binding(binding)
    , m_statement(tokens.Statement()) {
    shape(tokens);
    if (m_binding == Binding::SQLite && m_lists.size() > 1) {
        m_takeLists = false;
        m_pieces.clear();
        m_values.clear();
        m_lists.clear();
        shape(tokens);
    }
}

void StatementShape::shape(const SqlTokenList& tokens) {
    if (!shapeable(tokens)) {
        keepText();
        return;
    }
    QList<qsizetype> open; // the parentheses around the current token
    qsizetype pieceStart = 0;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        if (tokens.IsSymbol(i, Word("("))) {
            open.append(i);
            continue;
        }
        if (tokens.IsSymbol(i, Word(")"))) {
            if (!open.isEmpty())
                open.removeLast();
            continue;
        }
        const qsizetype last = valueEnd(tokens, i, open.isEmpty() ? -1 : open.last());
        if (last < 0)
            continue;
        if (m_values.size() > MaxValues) {
            keepText();
            return;
        }
        m_pieces.append({pieceStart, tokens.Begin(i)});
        pieceStart = tokens.End(last);
        i = last;
    }
    m_pieces.append({pieceStart, m_statement.size()});
    // A question mark or colon left in the text, even in a comment, may be taken for a
    // placeholder by the driver.
    const auto marks = [this](const Piece& piece) {
        const QStringView text = this->piece(piece);
        return text.contains(QLatin1Char('?')) || text.contains(QLatin1Char(':'));
    };
    if (std::any_of(m_pieces.cbegin(), m_pieces.cend(), marks))
        keepText();
}

void StatementShape::keepText() {
    m_pieces = {{0, m_statement.size()}};
    m_values.clear();
    m_lists.clear();
}

QStringView StatementShape::piece(const Piece& piece) const {
    return QStringView(m_statement).mid(piece.first, piece.second - piece.first);
}

bool StatementShape::shapeable(const SqlTokenList& tokens) const {
    if (tokens.Count() == 0 || !tokens.Balanced())
        return false;
    const bool dataStatement =
        tokens.IsKeyword(0, Word("SELECT")) || tokens.IsKeyword(0, Word("INSERT")) ||
        tokens.IsKeyword(0, Word("UPDATE")) || tokens.IsKeyword(0, Word("DELETE"));
    if (!dataStatement)
        return false;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        if (tokens.Kind(i) != SqlTokenKind::Symbol)
            continue;
        if (tokens.IsSymbol(i, Word(";")) || tokens.IsSymbol(i, Word("$")) ||
            tokens.IsSymbol(i, Word("@")))
            return false;
    }
    return true;
}

// The right side of a comparison or assignment, or an item of a VALUES or IN list: the database
// gives the value the type of what it meets, literal or parameter alike. The literal runs from
// first to last: a negative number is its minus sign and its digits.
bool StatementShape::fixesType(const SqlTokenList& tokens, qsizetype first, qsizetype last,
                               qsizetype enclosing) const {
    if (!endsOperand(tokens, last))
        return false;
    if (isComparisonOrAssignment(tokens, first - 1))
        return true;
    const bool listItem =
        tokens.IsSymbol(first - 1, Word("(")) || tokens.IsSymbol(first - 1, Word(","));
    return listItem && enclosing > 0 &&
           (tokens.IsKeyword(enclosing - 1, Word("VALUES")) ||
            tokens.IsKeyword(enclosing - 1, Word("IN")));
}

// The last token of the literal that starts at i, or -1 when none does. A minus sign written
// against a number starts one: positions saved in two passes are negative in the first.
qsizetype StatementShape::literalEnd(const SqlTokenList& tokens, qsizetype i) {
    const SqlTokenKind kind = tokens.Kind(i);
    if (kind == SqlTokenKind::String || kind == SqlTokenKind::Number)
        return i;
    const bool signedNumber = tokens.IsSymbol(i, Word("-")) && i + 1 < tokens.Count() &&
                              tokens.Kind(i + 1) == SqlTokenKind::Number &&
                              tokens.End(i) == tokens.Begin(i + 1);
    return signedNumber ? i + 1 : -1;
}

// Takes the value that starts at token i, a list or a literal whose type its context fixes
// (enclosing: the parenthesis around i, -1 when none); its last token, or -1 when none starts at i.
qsizetype StatementShape::valueEnd(const SqlTokenList& tokens, qsizetype i, qsizetype enclosing) {
    if (m_takeLists) {
        if (const qsizetype last = takeList(tokens, i); last >= 0)
            return last;
    }
    const qsizetype last = literalEnd(tokens, i);
    return last >= 0 && fixesType(tokens, i, last, enclosing) && take(tokens, i, last) ? last : -1;
}

// Takes `IN (1,2,3)` after a column's name, written as Render writes it back, as one value;
// returns its closing parenthesis, or -1 when the list is not such a list.
qsizetype StatementShape::takeList(const SqlTokenList& tokens, qsizetype in) {
    if (!tokens.IsKeyword(in, Word("IN")) || !tokens.IsSymbol(in + 1, Word("(")) ||
        !followsColumn(tokens, in))
        return -1;
    const qsizetype close = tokens.Closing(in + 1);
    if (close <= in + 2 || !endsCondition(tokens, close) ||
        tokens.Span(in, in + 1) != QLatin1StringView("IN ("))
        return -1;
    // Nothing between the tokens: the list is written as its value writes it back.
    for (qsizetype i = in + 2; i <= close; ++i) {
        if (tokens.Begin(i) != tokens.End(i - 1))
            return -1;
    }
    bool wide = false;
    for (qsizetype i = in + 2; i < close; ++i) {
        const qsizetype last = literalEnd(tokens, i);
        if (last < 0 || tokens.Kind(last) != SqlTokenKind::Number)
            return -1;
        const QStringView text = tokens.Span(i, last);
        bool ok = false;
        const qlonglong number = text.toLongLong(&ok);
        if (!ok || !writtenAsItsValue(text))
            return -1;
        wide = wide || !isInt32(number);
        i = last + 1;
        if (i < close && !tokens.IsSymbol(i, Word(",")))
            return -1;
    }
    const QStringView numbers = tokens.Span(in + 2, close - 1);
    if (m_binding == Binding::PostgreSQL) {
        m_lists.insert(m_values.size(), wide ? QStringLiteral("= ANY(CAST(? AS bigint[]))")
                                             : QStringLiteral("= ANY(CAST(? AS integer[]))"));
        m_values << QString(u'{').append(numbers).append(u'}');
    } else {
        m_lists.insert(m_values.size(), QStringLiteral("IN (SELECT value FROM json_each(?))"));
        m_values << QString(u'[').append(numbers).append(u']');
    }
    return close;
}

// Takes the literal from first to last as a value, unless its value would not write it back as
// it stands.
bool StatementShape::take(const SqlTokenList& tokens, qsizetype first, qsizetype last) {
    const QStringView text = tokens.Span(first, last);
    if (tokens.Kind(first) == SqlTokenKind::String) {
        QString value = text.mid(1, text.size() - 2).toString();
        value.replace(QStringLiteral("''"), QStringLiteral("'"));
        // An empty literal must stay text: drivers bind a null QString as NULL.
        m_values << (value.isNull() ? QStringLiteral("") : value);
        return true;
    }
    bool ok = false;
    const qlonglong number = text.toLongLong(&ok);
    if (!ok || !writtenAsItsValue(text))
        return false;
    m_values << number;
    return true;
}

QString StatementShape::Text() const {
    QString text;
    text.reserve(m_statement.size() + 16 * m_values.size());
    text += piece(m_pieces.first());
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        const QVariant& value = m_values[i];
        if (const auto list = m_lists.constFind(i); list != m_lists.constEnd())
            text += *list;
        else if (value.typeId() == QMetaType::QString || m_binding == Binding::SQLite)
            text += QLatin1Char('?');
        else if (isInt32(value.toLongLong()))
            text += QStringLiteral("CAST(? AS integer)");
        else
            text += QStringLiteral("CAST(? AS bigint)");
        text += piece(m_pieces[i + 1]);
    }
    return text;
}

QString StatementShape::Render() const {
    QString text = piece(m_pieces.first()).toString();
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        const QVariant& value = m_values[i];
        if (m_lists.contains(i))
            text += QStringLiteral("IN (") + value.toString().sliced(1).chopped(1) + u')';
        else if (value.typeId() == QMetaType::QString)
            text += quoted(value.toString());
        else
            text += QString::number(value.toLongLong());
        text += piece(m_pieces[i + 1]);
    }
    return text;
}

} // namespace Orvane::Studio
