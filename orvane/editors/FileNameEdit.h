#pragma once

#include <QLineEdit>

namespace Orvane {

// A text box for a file path: each typed character passes through mOrvane::FilterFileNameKey, so
// a forbidden file-name character or Enter never lands. Text set by a program or pasted from a
// menu is not filtered; the editor's IsValid reports it.
class FileNameEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit FileNameEdit(QWidget* parent = nullptr);

signals:
    // A keystroke that survived the filter, after the box has taken it.
    void keyAccepted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace Orvane
