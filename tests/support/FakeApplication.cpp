#include "tests/support/FakeApplication.h"

#include <QDialog>

namespace Orvane::Testing {

void FakeApplication::setMousePointer(qint32 value) {
    pointer = value;
    pointerHistory << value;
}

MsgBoxResult FakeApplication::MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon icon,
                                     const QString& title, MsgBoxDefaultButton defaultButton) {
    msgBoxes.append({prompt, buttons, icon, title, defaultButton});
    if (!msgBoxAnswers.empty()) {
        const MsgBoxResult answer = msgBoxAnswers.front();
        msgBoxAnswers.pop_front();
        return answer;
    }
    const bool asks = buttons == MsgBoxButtons::YesNo || buttons == MsgBoxButtons::YesNoCancel;
    return asks ? MsgBoxResult::Yes : MsgBoxResult::OK;
}

QString FakeApplication::GetOpenFileName(const QString& title, const QString&, const QString&) {
    fileTitles << title;
    if (fileAnswers.empty())
        return QString();
    QString answer = fileAnswers.front();
    fileAnswers.pop_front();
    return answer;
}

QString FakeApplication::InputBox(const QString& prompt, const QString& title,
                                  const QString& defaultText) {
    inputBoxes.append({prompt, title, defaultText});
    if (inputAnswers.empty())
        return QString();
    QString answer = inputAnswers.front();
    inputAnswers.pop_front();
    return answer;
}

int FakeApplication::ShowModal(QDialog& dialog) {
    modalShown << dialog.objectName();
    if (modalHandlers.empty())
        return QDialog::Rejected;
    std::function<int(QDialog&)> handler = modalHandlers.front();
    if (modalHandlers.size() > 1)
        modalHandlers.pop_front();
    return handler(dialog);
}

} // namespace Orvane::Testing
