#pragma once

#include "tests/support/FakeHost.h"

#include <QApplication>
#include <QTest>

namespace Orvane::Testing {

// What the tests of the ASCII and the ODBC settings editors share: three listed frequencies, an
// active window and the check of a failed validation.
class SettingsEditorFixture : public FakeHostTest {
protected:
    SettingsEditorFixture() {
        query->Answer("qv_frequency", {{{"frequency_id", 15}, {"Description", "15 Minutes"}},
                                       {{"frequency_id", 60}, {"Description", "Hourly"}},
                                       {{"frequency_id", 1440}, {"Description", "Daily"}}});
    }

    static void showActive(QWidget& editor) {
        editor.show();
        editor.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    }

    // IsValid fails with one critical message and the focus on the control to correct.
    template <typename Editor>
    void expectInvalid(Editor& editor, const QString& kind, const QString& message,
                       const QString& title, QWidget* focus) {
        app->msgBoxes.clear();
        EXPECT_FALSE(editor.IsValid(kind));
        ASSERT_EQ(app->msgBoxes.size(), 1);
        EXPECT_EQ(app->msgBoxes[0].prompt, message);
        EXPECT_EQ(app->msgBoxes[0].title, title);
        EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
        EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::OKOnly);
        EXPECT_EQ(QApplication::focusWidget(), focus) << title.toStdString();
    }

    // The object names of the children, joined by blanks, so that a failure prints readably.
    static std::string childNames(const QObject* parent, const QString& filter = QString()) {
        QStringList names;
        for (const QObject* child : parent->children())
            names << child->objectName();
        return names.filter(filter).join(QLatin1Char(' ')).toStdString();
    }
};

} // namespace Orvane::Testing
