#pragma once

#include <QString>
#include <QValidator>

namespace Orvane {

namespace mOrvane {

// The nine characters a file name may not contain, in this order.
inline const QString InvalidFileChars = QStringLiteral("\\*?\"'<>|;");
// The character code Enter types: a carriage return.
constexpr int EnterKey = QChar::CarriageReturn;

bool FileNameHasBadChar(const QString& text);
bool IsValidFileName(const QString& text);
// 0 (the keystroke is discarded) for a forbidden character or Enter; else the code unchanged.
int FilterFileNameKey(int code);

} // namespace mOrvane

// The file-name rule as a validator: a text with a forbidden character is invalid. Forward
// slashes and colons are allowed, so paths are written with forward slashes.
class FileNameValidator : public QValidator {
    Q_OBJECT

public:
    explicit FileNameValidator(QObject* parent = nullptr);

    State validate(QString& input, int& pos) const override;
};

} // namespace Orvane
