#include "orvane/editors/XDataSourcesODBC.h"
#include "tests/widgets/SettingsEditorFixture.h"

namespace Orvane::Testing {
namespace {

class XDataSourcesODBCTest : public SettingsEditorFixture<XDataSourcesODBC> {
protected:
    QList<QLineEdit*> textBoxes() {
        return {box("txtDB_Server"), box("txtDB_Database"), box("txtDB_Table"), box("txtDB_UserId"),
                box("txtDB_Password")};
    }
};

TEST_F(XDataSourcesODBCTest, DefaultsCheckTheBoxSelectTheFirstFrequencyAndEmptyTheBoxes) {
    for (QLineEdit* textBox : textBoxes())
        textBox->setText("old");
    changes.clear();
    editor.InitializeDefaults();
    EXPECT_TRUE(editor.IsTimeSeries());
    EXPECT_TRUE(frequency()->isEnabled());
    EXPECT_EQ(editor.Frequency(), 15);
    for (QLineEdit* textBox : textBoxes())
        EXPECT_TRUE(textBox->text().isEmpty()) << textBox->objectName().toStdString();
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(box("txtDB_Password")->echoMode(), QLineEdit::Password);
}

TEST_F(XDataSourcesODBCTest, InitializeIsSilentAndEachLaterEditReportsOnce) {
    editor.Initialize(true, 60, " srv ", "pm", "counters", "scott", " tiger ");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(box("txtDB_Server")->text(), "srv");
    EXPECT_EQ(QStringList({editor.Database(), editor.Table(), editor.UserId(), editor.Password()}),
              QStringList({"pm", "counters", "scott", "tiger"}));
    EXPECT_EQ(editor.Frequency(), 60);

    int expected = 0;
    for (QLineEdit* textBox : textBoxes()) {
        QTest::keyClicks(textBox, "x");
        EXPECT_EQ(changes.count(), ++expected) << textBox->objectName().toStdString();
    }
    frequency()->setCurrentIndex(0);
    timeSeries()->click();
    ASSERT_EQ(changes.count(), expected + 2);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_EQ(editor.Frequency(), 0);
}

TEST_F(XDataSourcesODBCTest, IsValidReportsFrequencyThenTableThenServer) {
    editor.Initialize(true, 999, QString(), "pm", QString(), QString(), QString());
    showActive();
    expectInvalid("A time series frequency must be selected", ": Frequency Selection Missing",
                  frequency());
    editor.setFrequency(15);
    expectInvalid("Please enter Table", ": Required Information is Missing", box("txtDB_Table"));
    editor.setTable("counters");
    expectInvalid("Please enter Server", ": Required Information is Missing", box("txtDB_Server"));

    box("txtDB_Server")->setText("   ");
    timeSeries()->click();
    frequency()->setCurrentIndex(-1);
    app->msgBoxes.clear();
    EXPECT_TRUE(editor.IsValid("Doc"));
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    EXPECT_EQ(editor.Server(), "");
}

TEST_F(XDataSourcesODBCTest, EditPermissionGovernsInputsButNotLabelsOrFrames) {
    app->editPermission = false;
    editor.Initialize(true, 15, "srv", QString(), "t", QString(), QString());
    for (QWidget* input : editor.findChildren<QWidget*>(QRegularExpression("^(txt|ck|cbo)")))
        EXPECT_FALSE(input->isEnabled()) << input->objectName().toStdString();
    for (QWidget* kept : editor.findChildren<QWidget*>(QRegularExpression("^(lbl|fra)")))
        EXPECT_TRUE(kept->isEnabled()) << kept->objectName().toStdString();

    // Unlike the ASCII editor's, with the permission the frequency box stays enabled beside an
    // unchecked box until the box is clicked.
    app->editPermission = true;
    editor.Initialize(false, 15, "srv", QString(), "t", QString(), QString());
    EXPECT_EQ(frequency()->currentIndex(), -1);
    EXPECT_TRUE(frequency()->isEnabled());
    timeSeries()->click();
    timeSeries()->click();
    EXPECT_FALSE(frequency()->isEnabled());
}

} // namespace
} // namespace Orvane::Testing
