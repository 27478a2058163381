#include "orvane/dialogs/fDetectColumns.h"

#include "orvane/host/IField.h"
#include "orvane/model/DataTypes.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace Orvane {

namespace {

QStandardItem* cell(const QString& text) {
    auto* item = new QStandardItem(text);
    item->setEditable(false);
    return item;
}

} // namespace

fDetectColumns::fDetectColumns(const DetectionPlan& plan, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("fDetectColumns"));
    setWindowTitle(tr("Detect Columns"));

    lblColumns = new QLabel(tr("These columns will be added:"), this);
    lblColumns->setObjectName(QStringLiteral("lblColumns"));
    grdColumns = new QTableView(this);
    grdColumns->setObjectName(QStringLiteral("grdColumns"));
    m_proposal = new QStandardItemModel(0, 3, this);
    m_proposal->setHorizontalHeaderLabels({tr("Name"), tr("Type"), tr("Position"), tr("Field")});
    grdColumns->setModel(m_proposal);
    grdColumns->verticalHeader()->hide();
    grdColumns->horizontalHeader()->setStretchLastSection(true);
    lblDifferences = new QLabel(tr("These differ from the layout and are left as they are:"), this);
    lblDifferences->setObjectName(QStringLiteral("lblDifferences"));
    txtDifferences = new QPlainTextEdit(plan.differences.join(QLatin1Char('\n')), this);
    txtDifferences->setObjectName(QStringLiteral("txtDifferences"));
    txtDifferences->setReadOnly(true);
    lblDifferences->setVisible(!plan.differences.isEmpty());
    txtDifferences->setVisible(!plan.differences.isEmpty());

    cmdOk = new QPushButton(tr("&OK"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOk, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* page = new QVBoxLayout(this);
    page->addWidget(lblColumns);
    page->addWidget(grdColumns, 2);
    page->addWidget(lblDifferences);
    page->addWidget(txtDifferences, 1);
    page->addWidget(buttons);
    fillProposal(plan);
    resize(560, 360);
}

void fDetectColumns::fillProposal(const DetectionPlan& plan) {
    if (plan.timeStampPosition > 0) {
        m_proposal->appendRow({cell(tr("Time Stamp (moves)")),
                               cell(mOrvane::DataTypeNameFromCode(QStringLiteral("D"))),
                               cell(QString::number(plan.timeStampPosition))});
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(plan.additions.size()); ++i) {
        const DetectedColumn& column = plan.additions[static_cast<qsizetype>(i)];
        const auto& field = i < plan.fields.size() ? plan.fields[i] : nullptr;
        m_proposal->appendRow({cell(column.name),
                               cell(mOrvane::DataTypeNameFromCode(column.typeCode)),
                               cell(QString::number(column.position)),
                               cell(field ? field->Field_Name() : QString())});
    }
    grdColumns->setColumnWidth(0, 200);
}

} // namespace Orvane
