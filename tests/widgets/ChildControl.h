#pragma once

#include "tests/support/FakeApplication.h"

#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <stdexcept>

namespace Orvane::Testing {

// A control reached by its object name; a missing one fails the test with the name.
template <typename T = QWidget> T* child(const QObject& parent, const QString& name) {
    if (T* found = parent.findChild<T*>(name))
        return found;
    throw std::runtime_error("no control " + name.toStdString());
}

// Shows the window and waits until it is the active one, so that focus changes take.
inline void showActive(QWidget& window) {
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

// Each message box shown, as "Icon Title: prompt", its buttons added unless OK alone.
inline QStringList boxes(const FakeApplication& app) {
    static const char* const icons[] = {"None", "Critical", "Question", "Exclamation",
                                        "Information"};
    static const char* const buttons[] = {"", " [OKCancel]", "", " [YesNoCancel]", " [YesNo]"};
    QStringList shown;
    for (const RecordedMsgBox& box : app.msgBoxes) {
        shown << QStringLiteral("%1 %2: %3%4")
                     .arg(icons[int(box.icon) / 16], box.title, box.prompt,
                          buttons[int(box.buttons)]);
    }
    return shown;
}

} // namespace Orvane::Testing
