#include "orvane/dialogs/FSelectEntityTree.h"

#include "orvane/editors/mOrvane.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/IWidgetFactory.h"
#include "orvane/host/XTemplate.h"

#include <QComboBox>
#include <QPushButton>

namespace Orvane {

namespace {

const QString Category = QStringLiteral("Traffic");

using mOrvane::TwipsToPixels;

constexpr int Margin = 120;
constexpr int ButtonWidth = 1215;
constexpr int ButtonHeight = 375;
constexpr int FilterRowHeight = 360;
constexpr int DesignHeight = 6000;

} // namespace

FSelectEntityTree::FSelectEntityTree(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("FSelectEntityTree"));
    setWindowTitle(QStringLiteral("Select  Entity"));
    createControls();
    resize(TwipsToPixels(7000), TwipsToPixels(DesignHeight));
}

FSelectEntityTree::~FSelectEntityTree() = default;

void FSelectEntityTree::createControls() {
    cboTypeFilter = new QComboBox(this);
    cboTypeFilter->setObjectName(QStringLiteral("cboTypeFilter"));
    cboTypeFilter->setToolTip(QStringLiteral("Field Type Filter"));
    cboTechTypeFilter = new QComboBox(this);
    cboTechTypeFilter->setObjectName(QStringLiteral("cboTechTypeFilter"));
    cboTechTypeFilter->setToolTip(QStringLiteral("Technology Type Filter"));

    tpl = HostRegistry::Widgets().CreateTemplateTree(this);
    tpl->setObjectName(QStringLiteral("tpl"));

    const QString captions[2] = {QStringLiteral("&Cancel"), QStringLiteral("&OK")};
    for (int i = 0; i < 2; ++i) {
        cmdButton[i] = new QPushButton(captions[i], this);
        cmdButton[i]->setObjectName(QStringLiteral("cmdButton(%1)").arg(i));
        cmdButton[i]->setAutoDefault(false);
    }
    cmdButton[1]->setDefault(true);

    connect(cmdButton[0], &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdButton[1], &QPushButton::clicked, this, &FSelectEntityTree::confirmSelection);
    connect(tpl, &XTemplate::FieldChosen, this, &FSelectEntityTree::chooseField);
    connect(cboTypeFilter, &QComboBox::currentTextChanged, this,
            &FSelectEntityTree::applyTypeFilter);
    connect(cboTechTypeFilter, &QComboBox::currentTextChanged, this,
            &FSelectEntityTree::applyTechTypeFilter);
}

void FSelectEntityTree::Initialize(const QString& sCaption, qint32 lMode, const QString& sSchema,
                                   qint32 lSelectId) {
    setWindowTitle(sCaption);
    tpl->setMode(lMode);
    if (tpl->Mode() == EntityOnlyMode) {
        prepareEntityMode();
        tpl->LoadTree(sSchema, Category);
    } else if (tpl->Mode() == EntityAndFieldMode) {
        tpl->setShowFields(1);
        tpl->LoadTree(sSchema, Category);
        prepareEntityAndFieldMode();
    } else {
        resize(TwipsToPixels(7000), height());
    }
    layoutControls();
    tpl->setFieldTypeFilter(
        HostRegistry::FieldInfo().FieldTypeMask(cboTypeFilter->currentText(), Category));
    tpl->setTreeOwner(QStringLiteral("system"));
    if (lSelectId > 0)
        tpl->SelectItem(lSelectId);
}

void FSelectEntityTree::prepareEntityMode() {
    m_entityOnly = true;
    tpl->setShowFields(0);
    cboTypeFilter->hide();
    cboTechTypeFilter->hide();
    m_treeTop = TwipsToPixels(60);
    tpl->setFocus();
    resize(TwipsToPixels(4250), height());
}

void FSelectEntityTree::prepareEntityAndFieldMode() {
    cboTypeFilter->addItem(QStringLiteral("External"));
    cboTypeFilter->setCurrentIndex(0);
    cboTechTypeFilter->addItems(HostRegistry::FieldInfo().TechnologyTypes());
    cboTechTypeFilter->setCurrentIndex(0);
    cboTypeFilter->show();
    cboTechTypeFilter->show();
    m_treeTop = TwipsToPixels(480);
    resize(TwipsToPixels(12300), height());
}

void FSelectEntityTree::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layoutControls();
}

void FSelectEntityTree::layoutControls() {
    const int margin = TwipsToPixels(Margin);
    const int buttonWidth = TwipsToPixels(ButtonWidth);
    const int buttonHeight = TwipsToPixels(ButtonHeight);
    const bool filters = !m_entityOnly && tpl->Mode() == EntityAndFieldMode;
    const int filterRow = filters ? TwipsToPixels(FilterRowHeight) : 0;

    if (filters) {
        const int filterWidth = (width() - 3 * margin) / 2;
        cboTypeFilter->setGeometry(margin, TwipsToPixels(60), filterWidth, filterRow);
        cboTechTypeFilter->setGeometry(2 * margin + filterWidth, TwipsToPixels(60), filterWidth,
                                       filterRow);
    }
    const int treeTop = m_treeTop > 0 ? m_treeTop : margin;
    tpl->setGeometry(margin, treeTop, width() - 2 * margin,
                     qMax(0, height() - 3 * margin - buttonHeight - filterRow));

    const int buttonTop = height() - margin - buttonHeight;
    cmdButton[1]->setGeometry(width() - margin - buttonWidth, buttonTop, buttonWidth, buttonHeight);
    cmdButton[0]->setGeometry(width() - 2 * margin - 2 * buttonWidth, buttonTop, buttonWidth,
                              buttonHeight);
}

void FSelectEntityTree::confirmSelection() {
    m_fieldCategory = HostRegistry::FieldInfo().ExternalDataEntity(Category, tpl->SelectedKey());
    if (!m_fieldCategory) {
        refuse(QStringLiteral("Entity"));
        return;
    }
    if (tpl->Mode() != EntityAndFieldMode) {
        m_ok = true;
        accept();
        return;
    }
    const QList<std::shared_ptr<IField>> fields = tpl->SelectedFields();
    m_field = fields.isEmpty() ? nullptr : fields.first();
    if (!m_field) {
        refuse(QStringLiteral("Field"));
        return;
    }
    m_ok = true;
    accept();
}

void FSelectEntityTree::refuse(const QString& what) {
    HostRegistry::App().MsgBox(
        QStringLiteral("Selected %1 is not allowed to be used for external data").arg(what) +
            MsgBoxLineBreak + QStringLiteral("Please select another %1").arg(what),
        MsgBoxButtons::OKOnly, MsgBoxIcon::Information, QStringLiteral("Select %1").arg(what));
    tpl->setFocus();
}

void FSelectEntityTree::chooseField(const std::shared_ptr<IField>& field,
                                    const QString& entityKey) {
    m_fieldCategory = HostRegistry::FieldInfo().ExternalDataEntity(Category, entityKey);
    m_field = field;
    confirmSelection();
}

void FSelectEntityTree::applyTypeFilter(const QString& filterName) {
    tpl->setFieldTypeFilter(HostRegistry::FieldInfo().FieldTypeMask(filterName, Category));
}

void FSelectEntityTree::applyTechTypeFilter(const QString& techType) {
    tpl->setTechTypeFilter(HostRegistry::FieldInfo().TechnologyType(techType));
}

} // namespace Orvane
