#pragma once

#include "orvane/sources/DetectionPlan.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace Orvane {

// "Detect Columns": shows what the command would append to a layout (names, types,
// positions, a moved time stamp) and what differs and stays as it is. OK applies the plan;
// Cancel leaves the layout untouched. Types remain the user's to change in the grid.
class fDetectColumns : public QDialog {
    Q_OBJECT

public:
    explicit fDetectColumns(const DetectionPlan& plan, QWidget* parent = nullptr);

private:
    void fillProposal(const DetectionPlan& plan);

    QLabel* lblColumns = nullptr;
    QTableView* grdColumns = nullptr;
    QStandardItemModel* m_proposal = nullptr;
    QLabel* lblDifferences = nullptr;
    QPlainTextEdit* txtDifferences = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
};

} // namespace Orvane
