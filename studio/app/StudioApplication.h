#pragma once

#include "orvane/host/IApplication.h"

#include <QPointer>

class QWidget;

namespace Orvane::Studio {

class HelpBrowser;

// The Studio's application object: real message and input boxes, the busy cursor, modal shows
// and help, for the library's controls and dialogs.
class StudioApplication : public IApplication {
public:
    explicit StudioApplication(bool editPermission = true, qint32 ownerId = 1);

    // The window that message and input boxes are shown over.
    void setMainWindow(QWidget* window) { m_mainWindow = window; }

    bool EditPermission() const override { return m_editPermission; }
    qint32 OwnerId() const override { return m_ownerId; }
    qint32 MousePointer() const override { return m_pointer; }
    void setMousePointer(qint32 pointer) override;
    MsgBoxResult MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon icon,
                        const QString& title,
                        MsgBoxDefaultButton defaultButton = MsgBoxDefaultButton::First) override;
    QString GetOpenFileName(const QString& title, const QString& directory,
                            const QString& filter) override;
    QString InputBox(const QString& prompt, const QString& title,
                     const QString& defaultText = QString()) override;
    int ShowModal(QDialog& dialog) override;
    void ShowHelp(const QString& helpContextName) override;
    void RegisterForm(IAppForm* form) override;
    void UnregisterForm(IAppForm* form) override;

private:
    bool m_editPermission;
    qint32 m_ownerId;
    qint32 m_pointer = DefaultPointer;
    QWidget* m_mainWindow = nullptr;
    QPointer<HelpBrowser> m_help;
};

} // namespace Orvane::Studio
