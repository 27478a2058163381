#pragma once

#include <QFont>
#include <QHash>
#include <QString>

namespace Orvane {

// Measures texts for fitting grid columns by adding up the advances of their characters, each
// measured once per font. Shaping every cell text would cost far more than filling the grid.
class TextWidthCache {
public:
    int Width(const QFont& font, const QString& text);

private:
    QFont m_font;
    QHash<char16_t, int> m_advances;
};

} // namespace Orvane
