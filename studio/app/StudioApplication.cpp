#include "studio/app/StudioApplication.h"

#include "studio/app/HelpBrowser.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace Orvane::Studio {

namespace {

QMessageBox::Icon iconOf(MsgBoxIcon icon) {
    switch (icon) {
    case MsgBoxIcon::Critical:
        return QMessageBox::Critical;
    case MsgBoxIcon::Question:
        return QMessageBox::Question;
    case MsgBoxIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgBoxIcon::Information:
        return QMessageBox::Information;
    case MsgBoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OKCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgBoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgBoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MsgBoxButtons::OKOnly:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton defaultOf(MsgBoxButtons buttons, MsgBoxDefaultButton defaultButton) {
    QList<QMessageBox::StandardButton> inOrder;
    switch (buttons) {
    case MsgBoxButtons::OKCancel:
        inOrder = {QMessageBox::Ok, QMessageBox::Cancel};
        break;
    case MsgBoxButtons::YesNo:
        inOrder = {QMessageBox::Yes, QMessageBox::No};
        break;
    case MsgBoxButtons::YesNoCancel:
        inOrder = {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
        break;
    case MsgBoxButtons::OKOnly:
        inOrder = {QMessageBox::Ok};
        break;
    }
    const qsizetype index = static_cast<int>(defaultButton) / 256;
    return inOrder.value(index < inOrder.size() ? index : 0);
}

MsgBoxResult resultOf(int button) {
    switch (button) {
    case QMessageBox::Cancel:
        return MsgBoxResult::Cancel;
    case QMessageBox::Yes:
        return MsgBoxResult::Yes;
    case QMessageBox::No:
        return MsgBoxResult::No;
    default:
        return MsgBoxResult::OK;
    }
}

} // namespace

StudioApplication::StudioApplication(bool editPermission, qint32 ownerId)
    : m_editPermission(editPermission)
    , m_ownerId(ownerId) {}

void StudioApplication::setMousePointer(qint32 pointer) {
    if (pointer == m_pointer)
        return;
    if (m_pointer == HourglassPointer)
        QApplication::restoreOverrideCursor();
    if (pointer == HourglassPointer)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    m_pointer = pointer;
}

MsgBoxResult StudioApplication::MsgBox(const QString& prompt, MsgBoxButtons buttons,
                                       MsgBoxIcon icon, const QString& title,
                                       MsgBoxDefaultButton defaultButton) {
    // Messages break their lines with CR LF; a Qt label wants LF alone.
    QString text = prompt;
    text.replace(MsgBoxLineBreak, QStringLiteral("\n"));
    QMessageBox box(iconOf(icon), title.isEmpty() ? QApplication::applicationName() : title, text,
                    buttonsOf(buttons), m_mainWindow);
    box.setDefaultButton(defaultOf(buttons, defaultButton));
    return resultOf(box.exec());
}

QString StudioApplication::InputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(m_mainWindow, title, prompt, QLineEdit::Normal, defaultText, &ok);
    return ok ? text : QString();
}

QString StudioApplication::GetOpenFileName(const QString& title, const QString& directory,
                                           const QString& filter) {
    QWidget* owner = QApplication::activeModalWidget();
    return QFileDialog::getOpenFileName(owner ? owner : m_mainWindow, title, directory, filter);
}

int StudioApplication::ShowModal(QDialog& dialog) {
    return dialog.exec();
}

// One guide window; opened from a modal dialog it belongs to that dialog, which would otherwise
// block it.
void StudioApplication::ShowHelp(const QString& helpContextName) {
    QWidget* owner = QApplication::activeModalWidget();
    if (!owner)
        owner = m_mainWindow;
    if (!m_help || m_help->parentWidget() != owner) {
        delete m_help;
        m_help = new HelpBrowser(owner);
        m_help->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_help->ShowPage(helpContextName);
    m_help->show();
    m_help->raise();
}

// The Studio keeps no window list, so a form needs no bookkeeping while it is loaded.
void StudioApplication::RegisterForm(IAppForm*) {}

void StudioApplication::UnregisterForm(IAppForm*) {}

} // namespace Orvane::Studio
