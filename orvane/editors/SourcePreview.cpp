#include "orvane/editors/SourcePreview.h"

#include "orvane/editors/SourcePreviewModel.h"
#include "orvane/editors/XDataSourcesGen.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>

#include <atomic>

namespace Orvane {

namespace {

// Typing a path starts no reading per keystroke.
constexpr int SettleMs = 250;
// A reading that takes longer than this shows its progress.
constexpr int ProgressAfterMs = 300;

QString recordList(const QList<qint32>& numbers) {
    QStringList texts;
    for (qint32 number : numbers.mid(0, 5))
        texts << QString::number(number);
    if (numbers.size() > 5)
        texts << QStringLiteral("...");
    return texts.join(QStringLiteral(", "));
}

} // namespace

// One reading: its cancel flag and progress, shared with the background task, which may
// outlive the widget's interest in it.
struct SourcePreview::Task {
    std::atomic_bool cancel{false};
    std::atomic<qint64> done{0};
    std::atomic<qint64> total{0};
};

SourcePreview::SourcePreview(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("SourcePreview"));
    createControls();
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMs);
    connect(&m_settle, &QTimer::timeout, this, &SourcePreview::Refresh);
    m_progress.setInterval(100);
    connect(&m_progress, &QTimer::timeout, this, &SourcePreview::showProgress);
    connect(&m_watcher, &QFutureWatcher<SourceHead>::finished, this, &SourcePreview::readingDone);
    lblStatus->setText(tr("No file to preview."));
}

SourcePreview::~SourcePreview() {
    Cancel();
    m_watcher.waitForFinished();
}

void SourcePreview::createControls() {
    lblStatus = new QLabel(this);
    lblStatus->setObjectName(QStringLiteral("lblStatus"));
    lblStatus->setWordWrap(true);
    prgReading = new QProgressBar(this);
    prgReading->setObjectName(QStringLiteral("prgReading"));
    prgReading->setVisible(false);
    cmdCancel = new QPushButton(tr("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setVisible(false);
    connect(cmdCancel, &QPushButton::clicked, this, &SourcePreview::Cancel);
    grdPreview = new QTableView(this);
    grdPreview->setObjectName(QStringLiteral("grdPreview"));
    m_model = new SourcePreviewModel(this);
    grdPreview->setModel(m_model);
    grdPreview->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grdPreview->verticalHeader()->setDefaultSectionSize(grdPreview->fontMetrics().height() + 6);

    auto* statusRow = new QHBoxLayout;
    statusRow->addWidget(lblStatus, 1);
    statusRow->addWidget(prgReading);
    statusRow->addWidget(cmdCancel);
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addLayout(statusRow);
    page->addWidget(grdPreview, 1);
}

void SourcePreview::Follow(XDataSourcesGen& editor) {
    const auto follow = [this, &editor] {
        m_fileName = editor.Eds_File();
        m_delimiter = editor.Eds_Delimeter();
        m_settle.start();
    };
    connect(&editor, &XDataSourcesGen::sourceEdited, this, follow);
    follow();
}

void SourcePreview::setFileName(const QString& value) {
    m_fileName = value;
    m_settle.start();
}

void SourcePreview::setDelimiter(const QString& value) {
    m_delimiter = value;
    m_settle.start();
}

QString SourcePreview::Status() const {
    return lblStatus->text();
}

void SourcePreview::Refresh() {
    m_settle.stop();
    Cancel();
    m_model->setRecords({});
    if (m_fileName.trimmed().isEmpty()) {
        lblStatus->setText(tr("No file to preview."));
        emit refreshed();
        return;
    }
    lblStatus->setText(tr("Reading \"%1\"...").arg(m_fileName));
    auto task = std::make_shared<Task>();
    m_task = task;
    const QString path = m_fileName;
    const QString delimiter = m_delimiter;
    m_watcher.setFuture(QtConcurrent::run([task, path, delimiter] {
        return ReadSourceHead(path, delimiter, Records, &task->cancel,
                              [&task](qint64 done, qint64 total) {
                                  task->done = done;
                                  task->total = total;
                              });
    }));
    QTimer::singleShot(ProgressAfterMs, this, [this, task] {
        if (m_task == task && m_watcher.isRunning()) {
            prgReading->setVisible(true);
            cmdCancel->setVisible(true);
            m_progress.start();
        }
    });
}

void SourcePreview::Cancel() {
    if (m_task)
        m_task->cancel = true;
}

void SourcePreview::showProgress() {
    if (!m_task)
        return;
    const qint64 total = m_task->total;
    prgReading->setRange(0, total > 0 ? 1000 : 0);
    if (total > 0)
        prgReading->setValue(static_cast<int>(m_task->done * 1000 / total));
}

void SourcePreview::readingDone() {
    m_progress.stop();
    prgReading->setVisible(false);
    cmdCancel->setVisible(false);
    showHead(m_watcher.result());
    emit refreshed();
}

void SourcePreview::showHead(const SourceHead& head) {
    if (!head.error.isEmpty()) {
        lblStatus->setText(head.error);
        return;
    }
    if (head.records.isEmpty()) {
        lblStatus->setText(tr("The file \"%1\" is empty.").arg(m_fileName));
        return;
    }
    m_model->setRecords(head.records);
    grdPreview->resizeColumnsToContents();
    QString status = head.wholeFile
                         ? tr("All %n record(s) of the file.", "", head.records.size())
                         : tr("The first %n record(s) of the file.", "", head.records.size());
    if (head.latin1)
        status += QLatin1Char(' ') + tr("The file is not UTF-8; it is read as Latin-1.");
    const QList<qint32> ragged = head.RaggedRecords();
    if (!ragged.isEmpty())
        status += QLatin1Char(' ') + tr("Records %1 have a different number of fields than the "
                                        "first (%2).")
                                         .arg(recordList(ragged))
                                         .arg(head.records.first().size());
    lblStatus->setText(status);
}

} // namespace Orvane
