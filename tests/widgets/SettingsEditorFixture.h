#pragma once

#include "orvane/editors/SettingsCopy.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMetaProperty>
#include <QSignalSpy>

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

    QLineEdit* box(const QString& name) { return child<QLineEdit>(editor, name); }
    QComboBox* list(const char* name) { return child<QComboBox>(editor, name); }
    QCheckBox* timeSeries() { return child<QCheckBox>(editor, "ckTimeSeries"); }
    QComboBox* frequency() { return list("cboFrequency"); }

    // IsValid("Doc") fails with this one message and the focus on the control to correct.
    void expectInvalid(const QString& message, QWidget* focus) {
        app->msgBoxes.clear();
        EXPECT_FALSE(editor.IsValid(QStringLiteral("Doc")));
        EXPECT_EQ(boxes(*app), QStringList{message});
        EXPECT_EQ(QApplication::focusWidget(), focus) << message.toStdString();
    }

    // Each text property notifies once when set (trimmed, then again unchanged) and once per
    // keystroke in its box that changes the trimmed text; every keystroke raises dsgChange.
    void expectTextPropertiesNotify(const QList<QPair<const char*, QString>>& map) {
        for (const auto& [property, boxName] : map) {
            SCOPED_TRACE(property);
            const QMetaObject* meta = editor.metaObject();
            QSignalSpy spy(&editor, meta->property(meta->indexOfProperty(property)).notifySignal());
            editor.setProperty(property, " v1 ");
            editor.setProperty(property, "v1");
            const qsizetype editsBefore = changes.count();
            QTest::keyClicks(box(boxName), " x");
            ASSERT_EQ(spy.count(), 2);
            EXPECT_EQ(spy.at(0).at(0).toString() + '|' + spy.at(1).at(0).toString(), "v1|v1 x");
            EXPECT_EQ(changes.count(), editsBefore + 2);
        }
    }

    Editor editor;
    QSignalSpy changes{&editor, &Editor::dsgChange};
};

} // namespace Orvane::Testing
