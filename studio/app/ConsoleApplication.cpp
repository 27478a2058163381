#include "studio/app/ConsoleApplication.h"

#include <cstdio>

namespace Orvane::Studio {

MsgBoxResult ConsoleApplication::MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon,
                                        const QString& title, MsgBoxDefaultButton) {
    QString text = prompt;
    text.replace(MsgBoxLineBreak, QStringLiteral(" "));
    std::fprintf(stderr, "%s%s\n",
                 qPrintable(title.isEmpty() ? QString() : title + QStringLiteral(": ")),
                 qPrintable(text));
    switch (buttons) {
    case MsgBoxButtons::YesNo:
        return MsgBoxResult::No;
    case MsgBoxButtons::OKCancel:
    case MsgBoxButtons::YesNoCancel:
        return MsgBoxResult::Cancel;
    case MsgBoxButtons::OKOnly:
        break;
    }
    return MsgBoxResult::OK;
}

} // namespace Orvane::Studio
