#include "orvane/editors/SettingsCopy.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"
#include "orvane/model/CDataSourcesData.h"
#include "tests/widgets/SettingsEditorFixture.h"

#include <QMetaProperty>

namespace Orvane::Testing {
namespace {

// Each text property notifies once when set (trimmed, then again unchanged) and once per
// keystroke in its box, which still raises dsgChange.
template <typename Editor>
void expectTextPropertiesNotify(Editor& editor, const QList<QPair<const char*, const char*>>& map) {
    for (const auto& [property, boxName] : map) {
        const QMetaObject* meta = editor.metaObject();
        QSignalSpy spy(&editor, meta->property(meta->indexOfProperty(property)).notifySignal());
        QSignalSpy edits(&editor, &Editor::dsgChange);
        editor.setProperty(property, " v1 ");
        editor.setProperty(property, "v1");
        const qsizetype editsBefore = edits.count();
        QTest::keyClicks(child<QLineEdit>(editor, boxName), "x");
        ASSERT_EQ(spy.count(), 2) << property;
        EXPECT_EQ(spy.at(0).at(0).toString() + spy.at(1).at(0).toString(), "v1v1x") << property;
        EXPECT_EQ(edits.count(), editsBefore + 1) << property;
    }
}

class GenPropertiesTest : public SettingsEditorFixture<XDataSourcesGen> {};
class OdbcPropertiesTest : public SettingsEditorFixture<XDataSourcesODBC> {};

TEST_F(GenPropertiesTest, EachSettingNotifiesOnceWhetherSetOrTypedAndCopiesIntoTheDocument) {
    editor.setData(std::make_shared<CDataSourcesData>());
    editor.InitializeDefaults();
    expectTextPropertiesNotify(editor,
                               {{"Description", "txtDescription"}, {"Eds_File", "txtFile"}});

    QSignalSpy delimiter(&editor, &XDataSourcesGen::Eds_DelimeterChanged);
    QSignalSpy freq(&editor, &XDataSourcesGen::FreqIdChanged);
    QSignalSpy series(&editor, &XDataSourcesGen::IsTimeSeriesChanged);
    editor.setProperty("Eds_Delimeter", ",");
    editor.setProperty("FreqId", 60);
    timeSeries()->click(); // FreqId reads 0 once the box is unchecked
    EXPECT_EQ(QList<qsizetype>({delimiter.count(), freq.count(), series.count()}),
              QList<qsizetype>({1, 2, 1}));
    EXPECT_EQ(freq.at(1).at(0).toInt(), 0);

    editor.setIsTimeSeries(true);
    CDataSourcesData doc;
    mOrvane::CopySettingsIntoDocument(editor, doc);
    EXPECT_EQ(QStringList({doc.DocDescription(), doc.FileName(), doc.Delimeter()}),
              QStringList({"v1x", "v1x", ","}));
    EXPECT_TRUE(doc.IsTimeSeries());
    EXPECT_EQ(doc.FreqId(), 60);
}

TEST_F(OdbcPropertiesTest, EachSettingNotifiesOnceAndCopiesIntoTheDocument) {
    editor.InitializeDefaults();
    expectTextPropertiesNotify(editor, {{"Server", "txtDB_Server"},
                                        {"Database", "txtDB_Database"},
                                        {"Table", "txtDB_Table"},
                                        {"UserId", "txtDB_UserId"},
                                        {"Password", "txtDB_Password"}});
    CDataSourcesData doc;
    mOrvane::CopySettingsIntoDocument(editor, doc);
    EXPECT_EQ(QStringList({doc.Server(), doc.Schema(), doc.Table(), doc.UserId(), doc.Password()}),
              QStringList(5, "v1x"));
    EXPECT_EQ(doc.FreqId(), 15);
}

} // namespace
} // namespace Orvane::Testing
