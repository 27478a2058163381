#pragma once

#include "orvane/sources/SourceHead.h"

#include <QFutureWatcher>
#include <QTimer>
#include <QWidget>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace Orvane {

class SourcePreviewModel;
class XDataSourcesGen;

// The first records of the data file, split as they will be loaded, shown under the ASCII
// editor. Reading runs in the background and starts again whenever the file name or the
// delimiter changes; a slow read shows its progress and can be cancelled. Whatever keeps the
// file from being shown is said in one line above the table.
class SourcePreview : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString FileName READ FileName WRITE setFileName)
    Q_PROPERTY(QString Delimiter READ Delimiter WRITE setDelimiter)

public:
    static constexpr qint32 Records = 20;

    explicit SourcePreview(QWidget* parent = nullptr);
    ~SourcePreview() override;

    // Shows the file and delimiter of the editor and follows their changes.
    void Follow(XDataSourcesGen& editor);

    QString FileName() const { return m_fileName; }
    void setFileName(const QString& value);
    // As the document stores it: one of " ", ":", ",", "/" and tab.
    QString Delimiter() const { return m_delimiter; }
    void setDelimiter(const QString& value);

    // The line above the table: what is shown, or why nothing is.
    QString Status() const;
    void Refresh();
    void Cancel();

signals:
    // A reading ended, shown or failed.
    void refreshed();

private:
    struct Task;

    void createControls();
    void readingDone();
    void showProgress();
    void showHead(const SourceHead& head);

    QLabel* lblStatus = nullptr;
    QProgressBar* prgReading = nullptr;
    QPushButton* cmdCancel = nullptr;
    QTableView* grdPreview = nullptr;
    SourcePreviewModel* m_model = nullptr;

    QString m_fileName;
    QString m_delimiter = QStringLiteral("\t");
    QTimer m_settle;
    QTimer m_progress;
    std::shared_ptr<Task> m_task;
    QFutureWatcher<SourceHead> m_watcher;
};

} // namespace Orvane
