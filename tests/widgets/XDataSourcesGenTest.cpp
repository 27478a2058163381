#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/widgets/SettingsEditorFixture.h"

#include <QPushButton>

namespace Orvane::Testing {
namespace {

class XDataSourcesGenTest : public SettingsEditorFixture<XDataSourcesGen> {
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

    QLineEdit* file() { return box("txtFile"); }
    QComboBox* delimiter() { return list("cboDelimeter"); }
};

TEST_F(XDataSourcesGenTest, DefaultsThenInitializeFillSilentlyAndDelimitersRoundTrip) {
    editor.InitializeDefaults();
    QStringList entries;
    for (int i = 0; i < delimiter()->count(); ++i)
        entries << delimiter()->itemText(i);
    EXPECT_EQ(entries.join('|'), "   <space>| : <colon>| , <comma>| / <slash>|   <tab>");
    EXPECT_EQ(editor.Eds_Delimeter(), "\t");
    EXPECT_TRUE(editor.IsTimeSeries());
    EXPECT_EQ(editor.Frequency(), 15);

    editor.Initialize(" Counters ", " /data/counters.txt ", ",", true, 60);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(box("txtDescription")->text(), " Counters ");
    EXPECT_EQ(editor.Eds_Description(), "Counters");
    EXPECT_EQ(editor.Eds_File(), "/data/counters.txt");
    EXPECT_EQ(delimiter()->currentText(), " , <comma>");
    EXPECT_EQ(editor.Frequency(), 60);
    EXPECT_EQ(frequency()->count(), 3); // a second fill does not duplicate the list
    for (const char* delimiterText : {" ", ":", ",", "/", "\t"}) {
        editor.setEds_Delimeter(delimiterText);
        EXPECT_EQ(editor.Eds_Delimeter(), delimiterText);
    }
    editor.setEds_Delimeter(" , ");
    EXPECT_EQ(delimiter()->currentIndex(), -1);
    EXPECT_EQ(delimiter()->placeholderText(), ",");
    EXPECT_EQ(editor.Eds_Delimeter(), "");
}

// Only keystrokes that land in the file box count as its edits, not the host's text.
TEST_F(XDataSourcesGenTest, EachEditReportsOnceAndTheBoxGovernsTheFrequency) {
    editor.setData(std::make_shared<CDataSourcesData>());
    editor.Initialize("d", QString(), ",", true, 60);
    QSignalSpy returns(file(), &QLineEdit::returnPressed);
    QTest::keyClicks(file(), "C:\\data;/in.csv");
    QTest::keyClick(file(), Qt::Key_Return);
    QTest::keyClick(file(), Qt::Key_Left); // moves the cursor, types nothing
    EXPECT_EQ(file()->text(), "C:data/in.csv");
    EXPECT_EQ(returns.count(), 0);
    EXPECT_EQ(changes.count(), 13); // one per character that landed
    editor.setEds_File("  /set/by/host.txt  ");
    EXPECT_EQ(file()->text(), "/set/by/host.txt");

    QTest::keyClicks(box("txtDescription"), "x");
    delimiter()->setCurrentIndex(1);
    frequency()->setCurrentIndex(2);
    EXPECT_EQ(changes.count(), 16);
    EXPECT_FALSE(changes.last().at(0).toBool());
    EXPECT_EQ(editor.Frequency(), 1440);
    timeSeries()->click();
    ASSERT_EQ(changes.count(), 17);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_FALSE(frequency()->isEnabled());
    EXPECT_EQ(editor.Frequency(), 0);
}

TEST_F(XDataSourcesGenTest, IsValidStopsAtTheFirstFailureAndFocusesItsControl) {
    editor.Initialize(QString(), QString(), ";", true, 999);
    showActive();
    expectInvalid("A full path must be supplied to the data file", " Path Error", file());
    file()->setText("\\\\server\\share\\in.csv");
    expectInvalid("A file name cannot include any of the following characters: \\*?\"'<>|;",
                  " File Name Error", file());
    file()->setText("/server/share/in.csv");
    expectInvalid("A delimeter type must be selected", " Delimeter Error", delimiter());
    editor.setEds_Delimeter("/");
    expectInvalid("A time series frequency must be selected", " Frequency Selection Error",
                  frequency());
    editor.setFrequency(1440);
    file()->setText("   "); // blanks are a name: it passes and reads empty
    app->msgBoxes.clear();
    EXPECT_TRUE(editor.IsValid("Doc"));
    EXPECT_EQ(editor.Eds_File(), "");
    EXPECT_TRUE(app->msgBoxes.isEmpty());
}

TEST_F(XDataSourcesGenTest, RemovingAStoredTimeStampColumnMustBeConfirmed) {
    auto data = storedDocument();
    editor.setData(data);
    editor.Initialize(QString(), "/in.csv", ",", true, 15);
    showActive();
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};
    QTest::mouseClick(timeSeries(), Qt::LeftButton);
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].prompt,
              "This will remove the 'Time Stamp' column and may affect existing reports");
    EXPECT_EQ(app->msgBoxes[0].title, "ARE YOU SURE?");
    EXPECT_TRUE(timeSeries()->isChecked());
    EXPECT_TRUE(frequency()->isEnabled());
    EXPECT_EQ(changes.count(), 0);

    QTest::mouseClick(timeSeries(), Qt::LeftButton);
    EXPECT_FALSE(timeSeries()->isChecked());
    ASSERT_EQ(changes.count(), 1);
    EXPECT_TRUE(changes[0].at(0).toBool());
    timeSeries()->click(); // checking again needs no confirmation

    data->Columns()->TSColumn()->setColumn_Id(0); // not stored yet: goes without asking
    timeSeries()->click();
    EXPECT_EQ(app->msgBoxes.size(), 2);
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(XDataSourcesGenTest, EditPermissionDisablesInputsButNotLabels) {
    app->editPermission = false;
    editor.Initialize("d", "/f", ",", true, 15);
    for (const char* input : {"txtDescription", "txtFile", "cboDelimeter", "ckTimeSeries"})
        EXPECT_FALSE(child(editor, input)->isEnabled()) << input;
    EXPECT_TRUE(child(editor, "lblFile")->isEnabled());

    app->editPermission = true;
    editor.Initialize("d", "/f", ",", false, 15);
    EXPECT_TRUE(file()->isEnabled());
    EXPECT_FALSE(frequency()->isEnabled()); // the frequency rule holds after Initialize
    EXPECT_EQ(frequency()->currentIndex(), -1);
}

TEST_F(XDataSourcesGenTest, BrowseTakesTheChosenPathAsTypedUnlessTheRuleForbidsIt) {
    editor.InitializeDefaults();
    auto* browse = child<QPushButton>(editor, "cmdBrowse");
    app->fileAnswers = {"", "/data/day.csv", "/data/it's.csv"};
    for (QString expected : {"", "/data/day.csv", "/data/day.csv"}) {
        browse->click();
        EXPECT_EQ(editor.Eds_File(), expected);
    }
    EXPECT_EQ(app->fileTitles.size(), 3);
    EXPECT_EQ(changes.count(), 1);
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
}

} // namespace
} // namespace Orvane::Testing
