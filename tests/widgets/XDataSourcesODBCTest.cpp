#include "orvane/editors/XDataSourcesODBC.h"
#include "tests/widgets/SettingsEditorFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace Orvane::Testing {
namespace {

class XDataSourcesODBCTest : public SettingsEditorFixture {
protected:
    void expectFailure(const QString& message, const QString& title, QWidget* focus) {
        expectInvalid(odbc, "ODBC", message, title, focus);
    }

    QList<QLineEdit*> textBoxes() const {
        return {odbc.txtDB_Server, odbc.txtDB_Database, odbc.txtDB_Table, odbc.txtDB_UserId,
                odbc.txtDB_Password};
    }

    XDataSourcesODBC odbc;
    QSignalSpy changes{&odbc, &XDataSourcesODBC::dsgChange};
};

TEST_F(XDataSourcesODBCTest, ControlsInTheirOrderWithCaptions) {
    EXPECT_EQ(childNames(&odbc), "fraDatabase lblTable lblDatabase lblServer fraLogin lblPass "
                                 "lblUser ckTimeSeries cboFrequency lblFreq");
    EXPECT_EQ(childNames(odbc.fraDatabase, "txt"), "txtDB_Table txtDB_Database txtDB_Server");
    EXPECT_EQ(childNames(odbc.fraLogin, "txt"), "txtDB_Password txtDB_UserId");
    EXPECT_EQ(odbc.fraDatabase->title(), "Source");
    EXPECT_EQ(odbc.fraLogin->title(), "Login");
    EXPECT_EQ(odbc.lblTable->text(), "Table:");
    EXPECT_EQ(odbc.lblDatabase->text(), "Database:");
    EXPECT_EQ(odbc.lblServer->text(), "Server:");
    EXPECT_EQ(odbc.lblPass->text(), "Password:");
    EXPECT_EQ(odbc.lblUser->text(), "UserId:");
    EXPECT_EQ(odbc.ckTimeSeries->text(), "Data IsTime Series");
    EXPECT_EQ(odbc.cboFrequency->toolTip(), "Select data frequency");
    EXPECT_EQ(odbc.lblFreq->text(), "Frequency:");
    EXPECT_EQ(odbc.txtDB_Password->echoMode(), QLineEdit::Password);
}

TEST_F(XDataSourcesODBCTest, TabMovesDownTheScreen) {
    odbc.InitializeDefaults();
    showActive(odbc);
    odbc.txtDB_Server->setFocus();
    QStringList visited;
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(visited.join(QLatin1Char(' ')).toStdString(),
              "txtDB_Database txtDB_Table txtDB_UserId txtDB_Password ckTimeSeries cboFrequency");
}

TEST_F(XDataSourcesODBCTest, DefaultsCheckTheBoxSelectTheFirstFrequencyAndEmptyTheBoxes) {
    for (QLineEdit* textBox : textBoxes())
        textBox->setText("old");
    changes.clear();
    odbc.InitializeDefaults();
    EXPECT_TRUE(odbc.IsTimeSeries());
    EXPECT_TRUE(odbc.cboFrequency->isEnabled());
    EXPECT_EQ(odbc.Frequency(), 15);
    for (QLineEdit* textBox : textBoxes())
        EXPECT_TRUE(textBox->text().isEmpty()) << textBox->objectName().toStdString();
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(XDataSourcesODBCTest, InitializeIsSilentAndEachLaterEditReportsOnce) {
    odbc.Initialize(true, 60, " srv ", "pm", "counters", "scott", " tiger ");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(odbc.txtDB_Server->text(), "srv");
    EXPECT_EQ(odbc.Database(), "pm");
    EXPECT_EQ(odbc.Table(), "counters");
    EXPECT_EQ(odbc.UserId(), "scott");
    EXPECT_EQ(odbc.Password(), "tiger");
    EXPECT_EQ(odbc.Frequency(), 60);

    int expected = 0;
    for (QLineEdit* textBox : textBoxes()) {
        QTest::keyClicks(textBox, "x");
        EXPECT_EQ(changes.count(), ++expected) << textBox->objectName().toStdString();
    }
    odbc.cboFrequency->setCurrentIndex(0);
    EXPECT_EQ(changes.count(), ++expected);
    odbc.ckTimeSeries->click();
    ASSERT_EQ(changes.count(), ++expected);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_EQ(odbc.Frequency(), 0);
}

TEST_F(XDataSourcesODBCTest, IsValidReportsFrequencyThenTableThenServer) {
    odbc.Initialize(true, 999, QString(), "pm", QString(), QString(), QString());
    showActive(odbc);

    expectFailure("A time series frequency must be selected", "ODBC: Frequency Selection Missing",
                  odbc.cboFrequency);
    odbc.setFrequency(15);
    expectFailure("Please enter Table", "ODBC: Required Information is Missing", odbc.txtDB_Table);
    odbc.setTable("counters");
    expectFailure("Please enter Server", "ODBC: Required Information is Missing",
                  odbc.txtDB_Server);

    odbc.txtDB_Server->setText("   ");
    odbc.ckTimeSeries->click();
    odbc.cboFrequency->setCurrentIndex(-1);
    app->msgBoxes.clear();
    EXPECT_TRUE(odbc.IsValid("ODBC"));
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    EXPECT_EQ(odbc.Server(), "");
}

TEST_F(XDataSourcesODBCTest, EditPermissionGovernsInputsButNotLabelsOrFrames) {
    app->editPermission = false;
    odbc.Initialize(true, 15, "srv", QString(), "t", QString(), QString());
    for (QLineEdit* textBox : textBoxes())
        EXPECT_FALSE(textBox->isEnabled()) << textBox->objectName().toStdString();
    EXPECT_FALSE(odbc.ckTimeSeries->isEnabled());
    EXPECT_FALSE(odbc.cboFrequency->isEnabled());
    for (QWidget* kept : std::initializer_list<QWidget*>{
             odbc.fraDatabase, odbc.fraLogin, odbc.lblTable, odbc.lblDatabase, odbc.lblServer,
             odbc.lblPass, odbc.lblUser, odbc.lblFreq})
        EXPECT_TRUE(kept->isEnabled()) << kept->objectName().toStdString();

    // Unlike the ASCII editor's, with the permission the frequency box stays enabled beside an
    // unchecked box until the box is clicked.
    app->editPermission = true;
    odbc.Initialize(false, 15, "srv", QString(), "t", QString(), QString());
    EXPECT_FALSE(odbc.IsTimeSeries());
    EXPECT_EQ(odbc.cboFrequency->currentIndex(), -1);
    EXPECT_TRUE(odbc.cboFrequency->isEnabled());
    odbc.ckTimeSeries->click();
    odbc.ckTimeSeries->click();
    EXPECT_FALSE(odbc.cboFrequency->isEnabled());
}

TEST_F(XDataSourcesODBCTest, ResizeKeepsTheMinimumWidthAndStretchesFramesAndBoxes) {
    odbc.show();
    odbc.resize(100, 100);
    EXPECT_EQ(odbc.width(), 5715 / 15);
    EXPECT_EQ(odbc.height(), 100);
    odbc.resize(600, 250);
    EXPECT_EQ(odbc.fraDatabase->width(), 600 - 120 / 15);
    EXPECT_EQ(odbc.fraLogin->width(), 600 - 120 / 15);
    for (QLineEdit* textBox : textBoxes())
        EXPECT_EQ(textBox->width(), 600 - 1080 / 15) << textBox->objectName().toStdString();
}

} // namespace
} // namespace Orvane::Testing
