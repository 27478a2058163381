#include "orvane/editors/FileNameValidator.h"

namespace Orvane {

namespace mOrvane {

bool FileNameHasBadChar(const QString& text) {
    for (const QChar c : text) {
        if (InvalidFileChars.contains(c))
            return true;
    }
    return false;
}

bool IsValidFileName(const QString& text) {
    for (const QChar c : InvalidFileChars) {
        if (text.contains(c))
            return false;
    }
    return true;
}

int FilterFileNameKey(int code) {
    if (code == EnterKey)
        return 0;
    if (code > 0 && code <= 0xFFFF && InvalidFileChars.contains(QChar(code)))
        return 0;
    return code;
}

} // namespace mOrvane

FileNameValidator::FileNameValidator(QObject* parent)
    : QValidator(parent) {}

QValidator::State FileNameValidator::validate(QString& input, int& /*pos*/) const {
    return mOrvane::IsValidFileName(input) ? Acceptable : Invalid;
}

} // namespace Orvane
