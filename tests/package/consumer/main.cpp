// Embeds Orvane's editors on the ready SQL host, as the README shows, and exits 0 when a stored
// data source loads, shows and saves.
#include <orvane/columns/XDataSourcesColumn.h>
#include <orvane/editors/XDataSourcesGen.h>
#include <orvane/host/IDocumentType.h>
#include <orvane/host/OrvaneError.h>
#include <orvane/model/CDataSourcesColumns.h>
#include <orvane/model/CDataSourcesData.h>
#include <orvane/sqlhost/SqlHost.h>

#include <QApplication>
#include <QTableView>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

namespace {

int fail(const QString& what) {
    std::fprintf(stderr, "orvane-consumer: %s\n", qPrintable(what));
    return 1;
}

qint32 idOf(const Orvane::SqlHost& host, const QString& name) {
    const auto documents = host.Documents();
    const auto found = std::find_if(documents.begin(), documents.end(),
                                    [&](const auto& document) { return document.name == name; });
    return found == documents.end() ? 0 : found->id;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QTemporaryDir folder;

    QString error;
    if (Orvane::SqlHost::Open(folder.filePath("missing/folder/orvane.db"), &error) ||
        error.isEmpty())
        return fail("a database that cannot be opened gave no reason");
    auto host = Orvane::SqlHost::Open(folder.filePath("orvane.db"), &error);
    if (!host)
        return fail(error);

    try {
        const qint32 id = idOf(*host, "Cell Traffic Feed");
        if (id == 0)
            return fail("the demo data source is missing");
        auto document = host->Load(id);

        QWidget window;
        auto* settings = new Orvane::XDataSourcesGen(&window);
        settings->setData(document);
        settings->Initialize(document->DocDescription(), document->FileName(),
                             document->Delimeter(), document->IsTimeSeries(), document->FreqId());
        auto* columns = new Orvane::XDataSourcesColumn(&window);
        columns->setAppName(document->DocumentType()->TypeName());
        columns->InitEdit(document->Columns());
        auto* page = new QVBoxLayout(&window);
        page->addWidget(settings);
        page->addWidget(columns);
        host->setMainWindow(&window);
        window.show();
        QApplication::processEvents();

        const auto* grid = columns->findChild<QTableView*>("fpsColumns");
        if (settings->Eds_File() != "/data/feeds/cell_traffic.csv" || !settings->isEnabled() ||
            !grid || grid->model()->columnCount() < document->Columns()->Count() ||
            document->Columns()->Count() != 4)
            return fail("the editors do not show the stored data source");

        document->setDocDescription("Saved by a consumer");
        host->Save(*document);
        if (host->Load(id)->DocDescription() != "Saved by a consumer")
            return fail("the saved description did not come back");
    } catch (const Orvane::Error& failure) {
        return fail(failure.message());
    }
    return 0;
}
