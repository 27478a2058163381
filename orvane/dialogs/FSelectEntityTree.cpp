#include "orvane/dialogs/FSelectEntityTree.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/XTemplate.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace Orvane {

namespace {

const QString Category = QStringLiteral("Traffic");

// Default sizes: narrower for an entity alone, wider beside the filters.
constexpr int DefaultWidth = 466;
constexpr int EntityOnlyWidth = 283;
constexpr int EntityAndFieldWidth = 820;
constexpr int DefaultHeight = 400;

} // namespace

FSelectEntityTree::FSelectEntityTree(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("FSelectEntityTree"));
    setWindowTitle(tr("Select  Entity"));
    createControls();
    layoutControls();
    resize(DefaultWidth, DefaultHeight);
    mOrvane::ShowWhenNoHost(*this);
}

FSelectEntityTree::~FSelectEntityTree() = default;

void FSelectEntityTree::createControls() {
    cboTypeFilter = new QComboBox(this);
    cboTypeFilter->setObjectName(QStringLiteral("cboTypeFilter"));
    cboTypeFilter->setToolTip(tr("Field Type Filter"));
    cboTechTypeFilter = new QComboBox(this);
    cboTechTypeFilter->setObjectName(QStringLiteral("cboTechTypeFilter"));
    cboTechTypeFilter->setToolTip(tr("Technology Type Filter"));

    tpl = mOrvane::CreateTemplateTree(this);
    tpl->setObjectName(QStringLiteral("tpl"));

    const QString captions[2] = {tr("&Cancel"), tr("&OK")};
    for (int i = 0; i < 2; ++i) {
        cmdButton[i] = new QPushButton(captions[i], this);
        cmdButton[i]->setObjectName(QStringLiteral("cmdButton(%1)").arg(i));
        cmdButton[i]->setAutoDefault(false);
    }
    cmdButton[1]->setDefault(true);

    connect(cmdButton[0], &QPushButton::clicked, this, &QDialog::reject);
    // Each of these asks the host's dictionary, which may fail; the user is told and may retry.
    connect(cmdButton[1], &QPushButton::clicked, this,
            [this] { mOrvane::RunReported(*this, [this] { confirmSelection(); }); });
    connect(tpl, &XTemplate::FieldChosen, this,
            [this](const std::shared_ptr<IField>& field, const QString& entityKey) {
                mOrvane::RunReported(*this, [&] { chooseField(field, entityKey); });
            });
    connect(cboTypeFilter, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        mOrvane::RunReported(*this, [&] { applyTypeFilter(text); });
    });
    connect(cboTechTypeFilter, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        mOrvane::RunReported(*this, [&] { applyTechTypeFilter(text); });
    });
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
        resize(DefaultWidth, height());
    }
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
    tpl->setFocus();
    resize(EntityOnlyWidth, height());
}

void FSelectEntityTree::prepareEntityAndFieldMode() {
    cboTypeFilter->addItem(QStringLiteral("External"));
    cboTypeFilter->setCurrentIndex(0);
    cboTechTypeFilter->addItems(HostRegistry::FieldInfo().TechnologyTypes());
    cboTechTypeFilter->setCurrentIndex(0);
    cboTypeFilter->show();
    cboTechTypeFilter->show();
    resize(EntityAndFieldWidth, height());
}

// The filters above the tree (hidden for an entity alone), the buttons below it.
void FSelectEntityTree::layoutControls() {
    auto* filters = new QHBoxLayout;
    filters->addWidget(cboTypeFilter, 1);
    filters->addWidget(cboTechTypeFilter, 1);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdButton[1], QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdButton[0], QDialogButtonBox::RejectRole);

    auto* page = new QVBoxLayout(this);
    page->addLayout(filters);
    page->addWidget(tpl, 1);
    page->addWidget(buttons);
}

void FSelectEntityTree::confirmSelection() {
    m_fieldCategory = HostRegistry::FieldInfo().ExternalDataEntity(Category, tpl->SelectedKey());
    if (!m_fieldCategory) {
        refuse(tr("Entity"));
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
        refuse(tr("Field"));
        return;
    }
    m_ok = true;
    accept();
}

void FSelectEntityTree::refuse(const QString& what) {
    HostRegistry::App().MsgBox(
        tr("Selected %1 is not allowed to be used for external data").arg(what) + MsgBoxLineBreak +
            tr("Please select another %1").arg(what),
        MsgBoxButtons::OKOnly, MsgBoxIcon::Information, tr("Select %1").arg(what));
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
