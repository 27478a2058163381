#pragma once

#include "orvane/host/IApplication.h"

namespace Orvane::Studio {

// The application object of the command line: no window, no display. A message goes to the
// standard error stream and is answered with its safe choice (No, Cancel or OK); input boxes,
// file choices and dialogs are cancelled.
class ConsoleApplication : public IApplication {
public:
    bool EditPermission() const override { return true; }
    qint32 OwnerId() const override { return 1; }
    qint32 MousePointer() const override { return m_pointer; }
    void setMousePointer(qint32 pointer) override { m_pointer = pointer; }
    MsgBoxResult MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon icon,
                        const QString& title,
                        MsgBoxDefaultButton defaultButton = MsgBoxDefaultButton::First) override;
    QString InputBox(const QString&, const QString&, const QString& = QString()) override {
        return QString();
    }
    QString GetOpenFileName(const QString&, const QString&, const QString&) override {
        return QString();
    }
    int ShowModal(QDialog&) override { return 0; }
    void ShowHelp(const QString&) override {}
    void RegisterForm(IAppForm*) override {}
    void UnregisterForm(IAppForm*) override {}

private:
    qint32 m_pointer = DefaultPointer;
};

} // namespace Orvane::Studio
