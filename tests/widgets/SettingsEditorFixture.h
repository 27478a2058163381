#pragma once

#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace Orvane::Testing {

// What the tests of the ASCII and the ODBC settings editors share: three listed frequencies, the
// editor's change signal, its shared controls and the check of a failed validation.
template <typename Editor> class SettingsEditorFixture : public FakeHostTest {
protected:
    SettingsEditorFixture() {
        query->Answer("qv_frequency", {{{"frequency_id", 15}, {"Description", "15 Minutes"}},
                                       {{"frequency_id", 60}, {"Description", "Hourly"}},
                                       {{"frequency_id", 1440}, {"Description", "Daily"}}});
    }

    QLineEdit* box(const char* name) { return child<QLineEdit>(editor, name); }
    QComboBox* list(const char* name) { return child<QComboBox>(editor, name); }
    QCheckBox* timeSeries() { return child<QCheckBox>(editor, "ckTimeSeries"); }
    QComboBox* frequency() { return list("cboFrequency"); }

    void showActive() {
        editor.show();
        editor.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    }

    // IsValid("Doc") fails with one critical message, titled "Doc" and the suffix, and the focus
    // on the control to correct.
    void expectInvalid(const QString& message, const QString& titleSuffix, QWidget* focus) {
        const QString title = QStringLiteral("Doc") + titleSuffix;
        app->msgBoxes.clear();
        EXPECT_FALSE(editor.IsValid(QStringLiteral("Doc")));
        ASSERT_EQ(app->msgBoxes.size(), 1);
        EXPECT_EQ(app->msgBoxes[0].prompt, message);
        EXPECT_EQ(app->msgBoxes[0].title, title);
        EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
        EXPECT_EQ(app->msgBoxes[0].buttons, MsgBoxButtons::OKOnly);
        EXPECT_EQ(QApplication::focusWidget(), focus) << title.toStdString();
    }

    Editor editor;
    QSignalSpy changes{&editor, &Editor::dsgChange};
};

} // namespace Orvane::Testing
