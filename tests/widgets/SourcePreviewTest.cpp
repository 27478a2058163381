#include "orvane/editors/SourcePreview.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "tests/widgets/SettingsEditorFixture.h"

#include <QAbstractItemModel>
#include <QFile>
#include <QTableView>
#include <QTemporaryDir>

namespace Orvane::Testing {
namespace {

using SourcePreviewTest = SettingsEditorFixture<XDataSourcesGen>;

TEST_F(SourcePreviewTest, FollowsTheEditorAndSaysWhyNothingShows) {
    QTemporaryDir dir;
    const QString path = dir.filePath("counters.csv");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,b\n1,2,3\n");
    file.close();

    editor.InitializeDefaults();
    SourcePreview preview;
    preview.Follow(editor);
    QSignalSpy refreshed(&preview, &SourcePreview::refreshed);
    const auto grid = [&preview] {
        const QAbstractItemModel& model = *child<QTableView>(preview, "grdPreview")->model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells << model.index(row, column).data().toString();
            rows << cells.join(',');
        }
        return rows.join('|');
    };
    const struct {
        QString file;
        QString delimiter;
        QString rows;
        QString status;
    } steps[] = {
        {path, ",", "a,b,|1,2,3", "Records 2 have a different number of fields"},
        {path, ":", "a,b|1,2,3", "All 2 record"},
        {dir.path(), ",", "", "is a folder"},
        {dir.filePath("gone.csv"), ",", "", "does not exist"},
    };
    for (const auto& step : steps) {
        editor.setEds_File(step.file);
        editor.setEds_Delimeter(step.delimiter);
        refreshed.clear();
        ASSERT_TRUE(refreshed.wait(5000)) << step.file.toStdString();
        EXPECT_EQ(grid(), step.rows);
        EXPECT_TRUE(preview.Status().contains(step.status)) << preview.Status().toStdString();
    }
}

} // namespace
} // namespace Orvane::Testing
