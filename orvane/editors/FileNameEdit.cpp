#include "orvane/editors/FileNameEdit.h"

#include "orvane/editors/FileNameValidator.h"

#include <QKeyEvent>

namespace Orvane {

namespace {

// The character code a keystroke types; 0 for a key that types nothing (arrows, shifts).
int typedCode(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return mOrvane::EnterKey;
    return event.text().isEmpty() ? 0 : event.text().at(0).unicode();
}

} // namespace

FileNameEdit::FileNameEdit(QWidget* parent)
    : QLineEdit(parent) {}

void FileNameEdit::keyPressEvent(QKeyEvent* event) {
    const int code = typedCode(*event);
    if (code > 0 && mOrvane::FilterFileNameKey(code) == 0) {
        // Left to the parent, so that Enter still reaches a host's default button.
        event->ignore();
        return;
    }
    QLineEdit::keyPressEvent(event);
    if (code > 0)
        emit keyAccepted();
}

} // namespace Orvane
