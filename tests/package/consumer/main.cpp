// Embeds Orvane's editors, placed by a Designer form, on the ready SQL host as the README
// shows; exits 0 when a stored data source loads, shows and saves.
#include <orvane/columns/XDataSourcesColumn.h>
#include <orvane/editors/XDataSourcesGen.h>
#include <orvane/host/IDocumentType.h>
#include <orvane/host/OrvaneError.h>
#include <orvane/model/CDataSourcesColumns.h>
#include <orvane/model/CDataSourcesData.h>
#include <orvane/sqlhost/SqlHost.h>

#include "ui_EdsForm.h"

#include <QApplication>
#include <QTableView>
#include <QTemporaryDir>
#include <cstdio>

static int fail(const QString& what) {
    std::fprintf(stderr, "orvane-consumer: %s\n", qPrintable(what));
    return 1;
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QTemporaryDir folder;
    QString error;
    if (Orvane::SqlHost::Open(folder.filePath("no/such/folder.db"), &error) || error.isEmpty())
        return fail("a database that cannot be opened gave no reason");
    auto host = Orvane::SqlHost::Open(folder.filePath("orvane.db"), &error);
    if (!host)
        return fail(error);
    try {
        qint32 id = 0;
        for (const auto& stored : host->Documents())
            id = stored.name == "Cell Traffic Feed" ? stored.id : id;
        auto doc = host->Load(id);
        QWidget window;
        Ui::EdsForm form;
        form.setupUi(&window);
        if (form.settings->Eds_Delimeter() != ",")
            return fail("the form's Eds_Delimeter did not reach the editor");
        auto* settings = form.settings;
        settings->setData(doc);
        settings->Initialize(doc->DocDescription(), doc->FileName(), doc->Delimeter(),
                             doc->IsTimeSeries(), doc->FreqId());
        auto* columns = form.columns;
        columns->setAppName(doc->DocumentType()->TypeName());
        columns->InitEdit(doc->Columns());
        window.show();
        QApplication::processEvents();
        const auto* grid = columns->findChild<QTableView*>("fpsColumns");
        if (settings->Eds_File() != "/data/feeds/cell_traffic.csv" || !settings->isEnabled() ||
            doc->Columns()->Count() != 4 || grid->model()->columnCount() < 4)
            return fail("the editors do not show the stored data source");
        doc->setDocDescription("Saved by a consumer");
        host->Save(*doc);
        if (host->Load(id)->DocDescription() != "Saved by a consumer")
            return fail("the saved description did not come back");
    } catch (const Orvane::Error& failure) {
        return fail(failure.message());
    }
    return 0;
}
