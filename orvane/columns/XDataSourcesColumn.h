#pragma once

#include "orvane/columns/ColumnCommand.h"
#include "orvane/columns/TextWidthCache.h"
#include "orvane/sources/DetectedColumn.h"

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

class QPoint;
class QTableView;

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumns;
class ColumnCommands;
class ColumnGridModel;
struct ColumnDetection;
struct DetectionPlan;

// The column layout editor: a toolbar above a grid in which each column of a data source is one
// grid column and its attributes are the rows. It edits the document's column collection in
// place and writes nothing to the database; deletions of stored columns are flags until the
// document is saved.
class XDataSourcesColumn : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString AppName READ AppName WRITE setAppName)

public:
    explicit XDataSourcesColumn(QWidget* parent = nullptr);
    ~XDataSourcesColumn() override;

    // The document type; "ODBC Data Source" lets the user rename the time-stamp column.
    const QString& AppName() const { return m_appName; }
    void setAppName(const QString& value) { m_appName = value; }

    // The collection being edited; the host hands it to the document's save.
    const std::shared_ptr<CDataSourcesColumns>& Columns() const { return m_columns; }

    // Adds (true) or removes (false) the time-stamp column, always the first grid column.
    void ShowTimeSeriesColumn(bool bVisible);
    // A new document: takes the collection and adds the time-stamp column.
    void InitNew(std::shared_ptr<CDataSourcesColumns> dscsNew);
    // An existing document: takes the loaded collection and shows it.
    void InitEdit(std::shared_ptr<CDataSourcesColumns> dscsNew);
    // Checks the layout; on the first problem tells the user, selects the cell to mend and
    // returns false.
    bool IsValid(const QString& sMsgBoxTitle);

    // Where Detect Columns finds the source's columns: a file's header and sample, or a table's
    // catalog. Without one the command is disabled.
    using DetectSource = std::function<ColumnDetection()>;
    void setDetectSource(DetectSource source);
    // Proposes the columns to the user (through the host's ShowModal) and on OK appends those
    // the layout lacks and moves the time stamp to the first date column, as one change. What
    // differs from existing columns is shown and left alone. True when the layout changed.
    bool DetectColumns(const DetectedColumns& detected);

signals:
    // The user's action changed the collection.
    void xdscChange();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using ColumnPtr = std::shared_ptr<CDataSourcesColumn>;
    class RedrawOff;

    void createGrid();
    void connectGridEvents();

    void fillGrid(const CDataSourcesColumn* leftOut = nullptr);
    void insertGridColumn(qint32 column, const ColumnPtr& model);
    void fitWidth(qint32 column);
    void selectCell(qint32 column, qint32 row);
    ColumnPtr currentColumn() const;

    // Grid events, with 1-based grid columns and rows.
    void cellClick(qint32 column, qint32 row);
    void clickActiveCell();
    void gridRightClick(qint32 column, qint32 row, const QPoint& globalPos);
    void gridDoubleClick(qint32 column, qint32 row);
    void cellEdited(qint32 column, qint32 row);

    void refreshToolbar();
    // Runs a command; a database failure on its way is shown to the user, not raised.
    void runCommand(ColumnCommand command);

    // The column commands.
    void appendColumn();
    void insertColumn();
    void deleteColumn();
    void renameColumn();
    void clearColumn();
    void keyButton();
    void delKeyButton();
    void fieldButton();
    void delFieldButton();
    void deleteKeyField();
    void deleteField();
    // Through the key field selector (frmKeySelector) and the field editor (fFieldInfo).
    void addKeyField();
    void editKeyField();
    void addField();
    void editField();
    void detectColumns();
    void applyDetection(const DetectionPlan& plan);

    // Shared steps of the commands.
    // renaming is the column being renamed, null when adding one.
    QString askColumnName(const CDataSourcesColumn* renaming);
    void addNewColumn(const QString& name, qint32 at);
    void addTimeStampColumn();
    void deleteCurrentGridColumn();
    void restoreColumn(const ColumnPtr& model);
    void moveColumn(qint32 from, qint32 to);
    void resyncPositions();
    void redrawCurrentColumn();

    ColumnCommands* m_commands = nullptr;
    QTableView* fpsColumns = nullptr;
    ColumnGridModel* m_grid = nullptr;
    TextWidthCache m_textWidths;
    DetectSource m_detectSource;

    QString m_appName;
    std::shared_ptr<CDataSourcesColumns> m_columns;
    qint32 m_currentColumn = 0;
    qint32 m_currentRow = 0;
    qint32 m_nameLengthLimit = 0;
    bool m_newDocument = true;
    int m_redrawOffDepth = 0;
};

} // namespace Orvane
