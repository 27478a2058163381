#include "orvane/editors/SourcePreview.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/support/FakeHost.h"
#include "tests/widgets/ChildControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>

namespace Orvane::Testing {
namespace {

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

class XDataSourcesGenTest : public SettingsEditorFixture<XDataSourcesGen> {
protected:
    QLineEdit* file() { return box("txtFile"); }
    QComboBox* delimiter() { return list("cboDelimeter"); }
};

TEST_F(XDataSourcesGenTest, DefaultsThenInitializeFillTheControlsAndDelimitersRoundTrip) {
    editor.InitializeDefaults();
    QStringList entries;
    for (int i = 0; i < delimiter()->count(); ++i)
        entries << delimiter()->itemText(i);
    EXPECT_EQ(entries.join('|'), "   <space>| : <colon>| , <comma>| / <slash>|   <tab>");
    EXPECT_EQ(editor.Eds_Delimeter() + QString::number(editor.Frequency()), "\t15");

    editor.Initialize(" Counters ", " /data/counters.txt ", ",", true, 60);
    EXPECT_EQ(QStringList({box("txtDescription")->text(), editor.Eds_Description(),
                           editor.Eds_File(), delimiter()->currentText()}),
              QStringList({" Counters ", "Counters", "/data/counters.txt", " , <comma>"}));
    // A second fill does not duplicate the list.
    EXPECT_EQ(std::tuple(editor.Frequency(), frequency()->count()), std::tuple(60, 3));
    for (const char* delimiterText : {" ", ":", ",", "/", "\t"}) {
        editor.setEds_Delimeter(delimiterText);
        EXPECT_EQ(editor.Eds_Delimeter(), delimiterText);
    }
    editor.setEds_Delimeter(" , ");
    EXPECT_EQ(delimiter()->placeholderText() + "|" + editor.Eds_Delimeter(), ",|");
}

// Only keystrokes that land in the file box count as its edits, not the host's text.
TEST_F(XDataSourcesGenTest, EachEditReportsAndNotifiesOnceAndTheBoxGovernsTheFrequency) {
    editor.setData(std::make_shared<CDataSourcesData>());
    editor.Initialize("d", QString(), ":", true, 60);
    expectTextPropertiesNotify({{"Description", "txtDescription"}, {"Eds_File", "txtFile"}});
    file()->clear();
    changes.clear();
    QSignalSpy returns(file(), &QLineEdit::returnPressed);
    QTest::keyClicks(file(), "C:\\data;/in.csv");
    QTest::keyClick(file(), Qt::Key_Return);
    QTest::keyClick(file(), Qt::Key_Left); // moves the cursor, types nothing
    EXPECT_EQ(file()->text(), "C:data/in.csv");
    // One change per character that landed.
    EXPECT_EQ(std::tuple(returns.count(), changes.count()), std::tuple(0, 13));
    editor.setEds_File("  /set/by/host.txt  ");
    EXPECT_EQ(file()->text(), "/set/by/host.txt");

    QSignalSpy delimiterSpy(&editor, &XDataSourcesGen::Eds_DelimeterChanged);
    QSignalSpy freq(&editor, &XDataSourcesGen::FreqIdChanged);
    QSignalSpy series(&editor, &XDataSourcesGen::IsTimeSeriesChanged);
    changes.clear();
    editor.setProperty("Eds_Delimeter", ",");
    editor.setProperty("FreqId", 1440);
    EXPECT_EQ(std::tuple(changes.count(), changes.last().at(0).toBool()), std::tuple(2, false));
    timeSeries()->click();
    ASSERT_EQ(changes.count(), 3);
    EXPECT_TRUE(changes.last().at(0).toBool());
    EXPECT_EQ(std::tuple(frequency()->isEnabled(), editor.Frequency()), std::tuple(false, 0));
    EXPECT_EQ(QList<qsizetype>({delimiterSpy.count(), freq.count(), series.count()}),
              QList<qsizetype>({1, 2, 1}));
    EXPECT_EQ(freq.at(1).at(0).toInt(), 0);

    // Checked again, the box brings its frequency back; the ASCII document walk checks that
    // each setting reaches the document.
    editor.setProperty("IsTimeSeries", true);
    EXPECT_EQ(editor.property("FreqId"), 1440);
}

TEST_F(XDataSourcesGenTest, IsValidStopsAtTheFirstFailureAndFocusesItsControl) {
    editor.Initialize(QString(), QString(), ";", true, 999);
    showActive(editor);
    expectInvalid("Critical Doc Path Error: A full path must be supplied to the data file", file());
    file()->setText("\\\\server\\share\\in.csv");
    expectInvalid("Critical Doc File Name Error: A file name cannot include any of the following "
                  "characters: \\*?\"'<>|;",
                  file());
    file()->setText("/server/share/in.csv");
    expectInvalid("Critical Doc Delimeter Error: A delimeter type must be selected", delimiter());
    editor.setEds_Delimeter("/");
    expectInvalid(
        "Critical Doc Frequency Selection Error: A time series frequency must be selected",
        frequency());
    editor.setFrequency(1440);
    file()->setText("   "); // blanks are a name: it passes and reads empty
    app->msgBoxes.clear();
    EXPECT_TRUE(editor.IsValid("Doc"));
    EXPECT_EQ(std::tuple(editor.Eds_File(), boxes(*app)), std::tuple(QString(), QStringList()));
}

TEST_F(XDataSourcesGenTest, RemovingAStoredTimeStampColumnMustBeConfirmed) {
    auto data = std::make_shared<CDataSourcesData>();
    data->setIsNew(false);
    const auto timeStamp = data->Columns()->Add("Time Stamp");
    timeStamp->setIsTimeStamp(true);
    timeStamp->setColumn_Id(5);
    editor.setData(data);
    editor.Initialize(QString(), "/in.csv", ",", true, 15);
    showActive(editor);
    app->msgBoxAnswers = {MsgBoxResult::No, MsgBoxResult::Yes};
    QTest::mouseClick(timeSeries(), Qt::LeftButton);
    EXPECT_EQ(boxes(*app), QStringList{"Critical ARE YOU SURE?: This will remove the 'Time "
                                       "Stamp' column and may affect existing reports [YesNo]"});
    EXPECT_EQ(std::tuple(timeSeries()->isChecked(), frequency()->isEnabled(), changes.count()),
              std::tuple(true, true, 0));

    QTest::mouseClick(timeSeries(), Qt::LeftButton);
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(std::tuple(timeSeries()->isChecked(), changes[0].at(0).toBool()),
              std::tuple(false, true));
    timeSeries()->click(); // checking again needs no confirmation

    timeStamp->setColumn_Id(0); // not stored yet: goes without asking
    timeSeries()->click();
    EXPECT_EQ(std::tuple(app->msgBoxes.size(), changes.count()), std::tuple(2, 3));
}

TEST_F(XDataSourcesGenTest, EditPermissionDisablesInputsButNotLabelsAndBrowseFillsTheFile) {
    app->editPermission = false;
    editor.Initialize("d", "/f", ",", true, 15);
    for (const char* input : {"txtDescription", "txtFile", "cboDelimeter", "ckTimeSeries"})
        EXPECT_FALSE(child(editor, input)->isEnabled()) << input;
    EXPECT_TRUE(child(editor, "lblFile")->isEnabled());

    app->editPermission = true;
    editor.Initialize("d", "/f", ",", false, 15);
    // The frequency rule holds after Initialize.
    EXPECT_EQ(std::tuple(file()->isEnabled(), frequency()->isEnabled()), std::tuple(true, false));
    EXPECT_EQ(frequency()->currentIndex(), -1);

    // Browse takes the chosen path as typed unless the file name rule forbids it.
    app->fileAnswers = {"", "/data/day.csv", "/data/it's.csv"};
    for (QString expected : {"/f", "/data/day.csv", "/data/day.csv"}) {
        child<QPushButton>(editor, "cmdBrowse")->click();
        EXPECT_EQ(editor.Eds_File(), expected);
    }
    EXPECT_EQ(std::tuple(app->fileTitles.size(), changes.count()), std::tuple(3, 1));
    ASSERT_EQ(app->msgBoxes.size(), 1);
    EXPECT_EQ(app->msgBoxes[0].icon, MsgBoxIcon::Critical);
}

TEST_F(XDataSourcesGenTest, ThePreviewFollowsTheEditorAndSaysWhyNothingShows) {
    QTemporaryDir dir;
    QFile file(dir.filePath("counters.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,b\n1,2,3\n");
    file.close();
    editor.InitializeDefaults();
    SourcePreview preview;
    preview.Follow(editor);
    QSignalSpy refreshed(&preview, &SourcePreview::refreshed);
    const struct {
        QString file, delimiter, rows, status;
    } steps[] = {
        {file.fileName(), ",", "a,b,|1,2,3", "Records 2 have a different number of fields"},
        {file.fileName(), ":", "a,b|1,2,3", "All 2 record"},
        {dir.filePath("gone.csv"), ",", "", "does not exist"},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.file.toStdString() + step.delimiter.toStdString());
        editor.setEds_File(step.file);
        editor.setEds_Delimeter(step.delimiter);
        refreshed.clear();
        ASSERT_TRUE(refreshed.wait(5000));
        const QAbstractItemModel& model = *child<QTableView>(preview, "grdPreview")->model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells << model.index(row, column).data().toString();
            rows << cells.join(',');
        }
        EXPECT_EQ(rows.join('|'), step.rows);
        EXPECT_TRUE(preview.Status().contains(step.status)) << preview.Status().toStdString();
    }
}

using XDataSourcesODBCTest = SettingsEditorFixture<XDataSourcesODBC>;

// The defaults' time series and frequency, the silent fill and the other settings are checked by
// the tests after this one and the studio walks.
TEST_F(XDataSourcesODBCTest, DefaultsEmptyTheBoxesAndInitializeTrimsTheLogin) {
    const QStringList names = {"txtDB_Server", "txtDB_Database", "txtDB_Table", "txtDB_UserId",
                               "txtDB_Password"};
    for (const QString& name : names)
        box(name)->setText("old");
    timeSeries()->setChecked(true);
    frequency()->setEnabled(false);
    editor.InitializeDefaults();
    EXPECT_TRUE(frequency()->isEnabled());
    for (const QString& name : names)
        EXPECT_EQ(box(name)->text(), "") << name.toStdString();
    EXPECT_EQ(box("txtDB_Password")->echoMode(), QLineEdit::Password);

    editor.Initialize(true, 60, " srv ", "pm", "counters", "scott", " tiger ");
    EXPECT_EQ(box("txtDB_Server")->text() + "|" + editor.Password(), "srv|tiger");
}

// The ODBC document walk checks that each setting reaches the document.
TEST_F(XDataSourcesODBCTest, EachSettingNotifiesAndReportsOnceAndUncheckingClearsTheFrequency) {
    editor.InitializeDefaults();
    expectTextPropertiesNotify({{"Server", "txtDB_Server"},
                                {"Database", "txtDB_Database"},
                                {"Table", "txtDB_Table"},
                                {"UserId", "txtDB_UserId"},
                                {"Password", "txtDB_Password"}});

    changes.clear();
    frequency()->setCurrentIndex(1);
    timeSeries()->click();
    ASSERT_EQ(changes.count(), 2);
    EXPECT_EQ(std::tuple(changes.last().at(0).toBool(), editor.Frequency()), std::tuple(true, 0));
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
    EXPECT_EQ(std::tuple(boxes(*app), editor.Server()), std::tuple(QStringList(), QString()));
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
    EXPECT_EQ(std::tuple(frequency()->currentIndex(), frequency()->isEnabled()),
              std::tuple(-1, true));
    timeSeries()->click();
    timeSeries()->click();
    EXPECT_FALSE(frequency()->isEnabled());
}

} // namespace
} // namespace Orvane::Testing
