#pragma once

#include <QString>

class QDialog;

namespace Orvane {

class IAppForm;

enum class MsgBoxButtons { OKOnly = 0, OKCancel = 1, YesNoCancel = 3, YesNo = 4 };
enum class MsgBoxIcon {
    None = 0,
    Critical = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64
};
enum class MsgBoxResult { OK = 1, Cancel = 2, Yes = 6, No = 7 };
// Which of the box's buttons, counted from the left (OK, Yes, No, Cancel in that order), Enter
// presses. A question whose Yes loses data makes No the default.
enum class MsgBoxDefaultButton { First = 0, Second = 256, Third = 512 };

// Messages of more than one line break their lines with this.
inline const QString MsgBoxLineBreak = QStringLiteral("\r\n");

// Mouse pointer codes of the host.
constexpr qint32 DefaultPointer = 0;
constexpr qint32 HourglassPointer = 11;

// The host's global application object. Every message box, input box and modal show of the
// library goes through it, so that a host (or a test) sees and answers each one.
class IApplication {
public:
    virtual ~IApplication() = default;

    virtual bool EditPermission() const = 0;
    virtual qint32 OwnerId() const = 0;

    virtual qint32 MousePointer() const = 0;
    virtual void setMousePointer(qint32 pointer) = 0;

    virtual MsgBoxResult MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon icon,
                                const QString& title,
                                MsgBoxDefaultButton defaultButton = MsgBoxDefaultButton::First) = 0;
    // The text entered; empty when the user cancelled.
    virtual QString InputBox(const QString& prompt, const QString& title,
                             const QString& defaultText = QString()) = 0;
    // The path of an existing file the user chose to open; empty when the user cancelled.
    // filter is in the usual form, "Text files (*.csv *.txt);;All files (*)".
    virtual QString GetOpenFileName(const QString& title, const QString& directory,
                                    const QString& filter) = 0;
    // Shows the dialog modally and returns its result code.
    virtual int ShowModal(QDialog& dialog) = 0;
    virtual void ShowHelp(const QString& helpContextName) = 0;

    virtual void RegisterForm(IAppForm* form) = 0;
    virtual void UnregisterForm(IAppForm* form) = 0;
};

} // namespace Orvane
