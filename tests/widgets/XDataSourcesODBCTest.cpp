#include "orvane/editors/XDataSourcesODBC.h"
#include "tests/widgets/SettingsEditorFixture.h"

namespace Orvane::Testing {
namespace {

using XDataSourcesODBCTest = SettingsEditorFixture<XDataSourcesODBC>;

TEST_F(XDataSourcesODBCTest, DefaultsEmptyTheBoxesAndInitializeFillsSilently) {
    const QStringList names = {"txtDB_Server", "txtDB_Database", "txtDB_Table", "txtDB_UserId",
                               "txtDB_Password"};
    for (const QString& name : names)
        box(name)->setText("old");
    changes.clear();
    editor.InitializeDefaults();
    EXPECT_TRUE(editor.IsTimeSeries() && frequency()->isEnabled());
    EXPECT_EQ(editor.Frequency(), 15);
    for (const QString& name : names)
        EXPECT_EQ(box(name)->text(), "") << name.toStdString();
    EXPECT_EQ(box("txtDB_Password")->echoMode(), QLineEdit::Password);

    editor.Initialize(true, 60, " srv ", "pm", "counters", "scott", " tiger ");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(QStringList({box("txtDB_Server")->text(), editor.Database(), editor.Table(),
                           editor.UserId(), editor.Password()}),
              QStringList({"srv", "pm", "counters", "scott", "tiger"}));
    EXPECT_EQ(editor.Frequency(), 60);
}

TEST_F(XDataSourcesODBCTest, EachSettingNotifiesAndReportsOnceAndCopiesIntoTheDocument) {
    editor.InitializeDefaults();
    expectTextPropertiesNotify({{"Server", "txtDB_Server"},
                                {"Database", "txtDB_Database"},
                                {"Table", "txtDB_Table"},
                                {"UserId", "txtDB_UserId"},
                                {"Password", "txtDB_Password"}});
    CDataSourcesData doc;
    mOrvane::CopySettingsIntoDocument(editor, doc);
    EXPECT_EQ(QStringList({doc.Server(), doc.Schema(), doc.Table(), doc.UserId(), doc.Password()}),
              QStringList(5, "v1 x"));
    EXPECT_EQ(doc.FreqId(), 15);

    changes.clear();
    frequency()->setCurrentIndex(1);
    timeSeries()->click();
    ASSERT_EQ(changes.count(), 2);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_EQ(editor.Frequency(), 0);
}

TEST_F(XDataSourcesODBCTest, IsValidReportsFrequencyThenTableThenServer) {
    editor.Initialize(true, 999, QString(), "pm", QString(), QString(), QString());
    showActive(editor);
    expectInvalid("Critical Doc: Frequency Selection Missing: A time series frequency must be "
                  "selected",
                  frequency());
    editor.setFrequency(15);
    expectInvalid("Critical Doc: Required Information is Missing: Please enter Table",
                  box("txtDB_Table"));
    editor.setTable("counters");
    expectInvalid("Critical Doc: Required Information is Missing: Please enter Server",
                  box("txtDB_Server"));

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
