#pragma once

#include "orvane/host/IApplication.h"

#include <QList>
#include <QStringList>
#include <deque>
#include <functional>

namespace Orvane::Testing {

struct RecordedMsgBox {
    QString prompt;
    MsgBoxButtons buttons;
    MsgBoxIcon icon;
    QString title;
    MsgBoxDefaultButton defaultButton = MsgBoxDefaultButton::First;
};

struct RecordedInputBox {
    QString prompt;
    QString title;
    QString defaultText;
};

// An application object that records message and input boxes and answers them from scripts,
// and lets a test fill in each modal dialog before it "closes".
class FakeApplication : public IApplication {
public:
    bool editPermission = true;
    qint32 ownerId = 7;
    qint32 pointer = DefaultPointer;
    QList<qint32> pointerHistory; // every value set, in order

    QList<RecordedMsgBox> msgBoxes;
    std::deque<MsgBoxResult> msgBoxAnswers; // when empty: OK, or Yes for a Yes/No box
    QList<RecordedInputBox> inputBoxes;
    std::deque<QString> inputAnswers; // when empty: "" (the user cancelled)
    // Handlers for modal shows, used in order; the last one stays for later shows.
    // Without any, a modal show returns Rejected at once.
    std::deque<std::function<int(QDialog&)>> modalHandlers;
    QStringList fileTitles;          // the title of each file choice
    std::deque<QString> fileAnswers; // when empty: "" (the user cancelled)
    QStringList modalShown;          // the objectName of each dialog shown
    QStringList helpShown;
    int registeredForms = 0;

    bool EditPermission() const override { return editPermission; }
    qint32 OwnerId() const override { return ownerId; }
    qint32 MousePointer() const override { return pointer; }
    void setMousePointer(qint32 value) override;
    MsgBoxResult MsgBox(const QString& prompt, MsgBoxButtons buttons, MsgBoxIcon icon,
                        const QString& title,
                        MsgBoxDefaultButton defaultButton = MsgBoxDefaultButton::First) override;
    QString InputBox(const QString& prompt, const QString& title,
                     const QString& defaultText = QString()) override;
    QString GetOpenFileName(const QString& title, const QString& directory,
                            const QString& filter) override;
    int ShowModal(QDialog& dialog) override;
    void ShowHelp(const QString& helpContextName) override { helpShown << helpContextName; }
    void RegisterForm(IAppForm*) override { ++registeredForms; }
    void UnregisterForm(IAppForm*) override { --registeredForms; }
};

} // namespace Orvane::Testing
