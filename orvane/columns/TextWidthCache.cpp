#include "orvane/columns/TextWidthCache.h"

#include <QFontMetrics>

namespace Orvane {

int TextWidthCache::Width(const QFont& font, const QString& text) {
    if (font != m_font) {
        m_font = font;
        m_advances.clear();
    }
    int width = 0;
    for (const QChar c : text) {
        auto found = m_advances.constFind(c.unicode());
        if (found == m_advances.constEnd())
            found = m_advances.insert(c.unicode(), QFontMetrics(m_font).horizontalAdvance(c));
        width += found.value();
    }
    return width;
}

} // namespace Orvane
