#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/FileNameEdit.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/widgets/SettingsEditorFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace Orvane::Testing {
namespace {

class XDataSourcesGenTest : public SettingsEditorFixture {
protected:
    // A stored document whose time-stamp column is in the database.
    std::shared_ptr<CDataSourcesData> storedDocument() {
        auto data = std::make_shared<CDataSourcesData>();
        data->setIsNew(false);
        const auto timeStamp = data->Columns()->Add("Time Stamp");
        timeStamp->setIsTimeStamp(true);
        timeStamp->setColumn_Id(5);
        return data;
    }

    void expectFailure(const QString& message, const QString& title, QWidget* focus) {
        expectInvalid(gen, "ASCII", message, title, focus);
    }

    XDataSourcesGen gen;
    QSignalSpy changes{&gen, &XDataSourcesGen::dsgChange};
};

TEST_F(XDataSourcesGenTest, ControlsInOrderWithCaptionsAndToolTips) {
    EXPECT_EQ(childNames(&gen),
              "lblDesc txtDescription lblFile txtFile lblDelimeter cboDelimeter ckTimeSeries "
              "lblFreq cboFrequency");
    EXPECT_EQ(gen.lblDesc->text(), "Description:");
    EXPECT_EQ(gen.txtDescription->toolTip(), "Enter Description of Document");
    EXPECT_EQ(gen.lblFile->text(), "File Name:");
    EXPECT_EQ(gen.txtFile->toolTip(), "Enter file path and name");
    EXPECT_EQ(gen.lblDelimeter->text(), "Delimeter:");
    EXPECT_EQ(gen.cboDelimeter->toolTip(), "Select Delimeter");
    EXPECT_EQ(gen.ckTimeSeries->text(), "Data IsTime Series");
    EXPECT_EQ(gen.ckTimeSeries->toolTip(), "Check if data is time series");
    EXPECT_EQ(gen.lblFreq->text(), "Frequency:");

    gen.InitializeDefaults();
    QStringList entries;
    for (int i = 0; i < gen.cboDelimeter->count(); ++i)
        entries << gen.cboDelimeter->itemText(i);
    EXPECT_EQ(entries.join(QLatin1Char('|')).toStdString(),
              "   <space>| : <colon>| , <comma>| / <slash>|   <tab>");
    EXPECT_EQ(gen.cboDelimeter->currentIndex(), 4);
    EXPECT_EQ(gen.Eds_Delimeter(), "\t");
    EXPECT_TRUE(gen.IsTimeSeries());
    EXPECT_EQ(gen.cboFrequency->count(), 3);
    EXPECT_EQ(gen.cboFrequency->currentText(), "15 Minutes");
    EXPECT_EQ(gen.Frequency(), 15);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(XDataSourcesGenTest, FileBoxTakesOnlyAllowedKeystrokesAndReportsEach) {
    gen.InitializeDefaults();
    QSignalSpy returns(gen.txtFile, &QLineEdit::returnPressed);

    QTest::keyClicks(gen.txtFile, "C:\\data;/in.csv");
    QTest::keyClick(gen.txtFile, Qt::Key_Return);
    QTest::keyClick(gen.txtFile, Qt::Key_Enter);

    EXPECT_EQ(gen.txtFile->text(), "C:data/in.csv");
    EXPECT_EQ(returns.count(), 0);
    ASSERT_EQ(changes.count(), 13); // one per character that landed
    for (const QList<QVariant>& change : changes)
        EXPECT_FALSE(change.at(0).toBool());

    changes.clear();
    QTest::keyClick(gen.txtFile, Qt::Key_Left); // moves the cursor, types nothing
    gen.setEds_File("  /set/by/host.txt  ");
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(gen.txtFile->text(), "/set/by/host.txt");
    QTest::keyClick(gen.txtFile, Qt::Key_Backspace);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(XDataSourcesGenTest, InitializeIsSilentAndEachLaterEditReportsOnce) {
    gen.setData(std::make_shared<CDataSourcesData>());
    gen.Initialize(" Counters ", " /data/counters.txt ", ",", true, 60);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(gen.txtDescription->text(), " Counters ");
    EXPECT_EQ(gen.Eds_Description(), "Counters");
    EXPECT_EQ(gen.Eds_File(), "/data/counters.txt");
    EXPECT_EQ(gen.cboDelimeter->currentText(), " , <comma>");
    EXPECT_EQ(gen.Frequency(), 60);

    QTest::keyClicks(gen.txtDescription, "x");
    EXPECT_EQ(changes.count(), 1);
    gen.cboDelimeter->setCurrentIndex(1);
    EXPECT_EQ(changes.count(), 2);
    gen.cboFrequency->setCurrentIndex(2);
    EXPECT_EQ(changes.count(), 3);
    EXPECT_EQ(gen.Frequency(), 1440);
    gen.ckTimeSeries->click();
    ASSERT_EQ(changes.count(), 4);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_FALSE(gen.cboFrequency->isEnabled());
    EXPECT_EQ(gen.Frequency(), 0);
}

TEST_F(XDataSourcesGenTest, IsValidStopsAtTheFirstFailureAndFocusesItsControl) {
    gen.Initialize(QString(), QString(), ";", true, 999);
    showActive(gen);

    expectFailure("A full path must be supplied to the data file", "ASCII Path Error", gen.txtFile);
    gen.txtFile->setText("\\\\server\\share\\in.csv");
    expectFailure("A file name cannot include any of the following characters: \\*?\"'<>|;",
                  "ASCII File Name Error", gen.txtFile);
    gen.txtFile->setText("/server/share/in.csv");
    expectFailure("A delimeter type must be selected", "ASCII Delimeter Error", gen.cboDelimeter);
    gen.setEds_Delimeter("/");
    expectFailure("A time series frequency must be selected", "ASCII Frequency Selection Error",
                  gen.cboFrequency);
    gen.setFrequency(1440);
    app->msgBoxes.clear();
    EXPECT_TRUE(gen.IsValid("ASCII"));
    gen.txtFile->setText("   "); // blanks are a name: it passes and reads empty
    EXPECT_TRUE(gen.IsValid("ASCII"));
    EXPECT_EQ(gen.Eds_File(), "");
    EXPECT_TRUE(app->msgBoxes.isEmpty());
}

TEST_F(XDataSourcesGenTest, DelimiterRoundTripsAndUnknownValuesLeaveNoSelection) {
    gen.InitializeDefaults();
    for (const char* delimiter : {" ", ":", ",", "/", "\t"}) {
        gen.setEds_Delimeter(QString::fromLatin1(delimiter));
        EXPECT_EQ(gen.Eds_Delimeter(), QString::fromLatin1(delimiter));
    }
    gen.setEds_Delimeter(" , ");
    EXPECT_EQ(gen.cboDelimeter->currentIndex(), -1);
    EXPECT_EQ(gen.cboDelimeter->placeholderText(), ",");
    EXPECT_EQ(gen.Eds_Delimeter(), "");
    gen.setEds_Delimeter(":");
    EXPECT_EQ(gen.cboDelimeter->currentText(), " : <colon>");
}

TEST_F(XDataSourcesGenTest, RefusedTimeStampRemovalLeavesTheBoxCheckedAndSilent) {
    gen.setData(storedDocument());
    gen.Initialize(QString(), "/in.csv", ",", true, 15);
    showActive(gen);
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};

    QTest::mouseClick(gen.ckTimeSeries, Qt::LeftButton);
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt,
              "This will remove the 'Time Stamp' column and may affect existing reports");
    EXPECT_EQ(app->msgBoxes[0].title, "ARE YOU SURE?");
    EXPECT_TRUE(gen.ckTimeSeries->isChecked());
    EXPECT_TRUE(gen.cboFrequency->isEnabled());
    EXPECT_EQ(changes.count(), 0);

    QTest::mouseClick(gen.ckTimeSeries, Qt::LeftButton);
    EXPECT_EQ(app->msgBoxes.size(), 2);
    EXPECT_FALSE(gen.ckTimeSeries->isChecked());
    EXPECT_FALSE(gen.cboFrequency->isEnabled());
    ASSERT_EQ(changes.count(), 1);
    EXPECT_TRUE(changes[0].at(0).toBool());

    gen.ckTimeSeries->click(); // checking again needs no confirmation
    EXPECT_EQ(app->msgBoxes.size(), 2);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(XDataSourcesGenTest, TimeStampWithoutDatabaseIdGoesWithoutAsking) {
    auto data = storedDocument();
    data->Columns()->TSColumn()->setColumn_Id(0);
    gen.setData(data);
    gen.InitializeDefaults();
    gen.ckTimeSeries->click();
    EXPECT_FALSE(gen.IsTimeSeries());
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    EXPECT_EQ(changes.count(), 1);

    data->setIsNew(true);
    data->Columns()->TSColumn()->setColumn_Id(5);
    gen.setIsTimeSeries(true);
    gen.setIsTimeSeries(false);
    EXPECT_TRUE(app->msgBoxes.isEmpty());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(XDataSourcesGenTest, EditPermissionDisablesInputsButNotLabels) {
    app->editPermission = false;
    gen.Initialize("d", "/f", ",", true, 15);
    for (QWidget* input : std::initializer_list<QWidget*>{
             gen.txtDescription, gen.txtFile, gen.cboDelimeter, gen.ckTimeSeries, gen.cboFrequency})
        EXPECT_FALSE(input->isEnabled()) << input->objectName().toStdString();
    for (QLabel* label : {gen.lblDesc, gen.lblFile, gen.lblDelimeter, gen.lblFreq})
        EXPECT_TRUE(label->isEnabled()) << label->objectName().toStdString();

    app->editPermission = true;
    gen.Initialize("d", "/f", ",", false, 15);
    EXPECT_TRUE(gen.txtFile->isEnabled());
    EXPECT_FALSE(gen.cboFrequency->isEnabled()); // the frequency rule holds after Initialize
    EXPECT_EQ(gen.cboFrequency->currentIndex(), -1);
    EXPECT_EQ(gen.cboFrequency->count(), 3); // a second fill does not duplicate the list
}

TEST_F(XDataSourcesGenTest, ResizeKeepsTheMinimumAndStretchesTheTextBoxes) {
    gen.show();
    gen.resize(100, 50);
    EXPECT_EQ(gen.size(), QSize(6195 / 15, 2505 / 15));
    gen.resize(700, 300);
    EXPECT_EQ(gen.txtDescription->width(), 700 - 1080 / 15);
    EXPECT_EQ(gen.txtFile->width(), 700 - 1080 / 15);
}

} // namespace
} // namespace Orvane::Testing
