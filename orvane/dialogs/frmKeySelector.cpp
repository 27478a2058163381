#include "orvane/dialogs/frmKeySelector.h"

#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QVBoxLayout>

namespace Orvane {

namespace {

const QString AppGroup = QStringLiteral("Traffic");

bool isAsciiDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// The ordinal box takes digits only. Backspace counts as a typed character and is discarded
// too; Delete, the arrows and control-key shortcuts type nothing and pass.
bool isDiscardedKeystroke(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Backspace)
        return true;
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    const QString text = key.text();
    return !text.isEmpty() && text.front().isPrint() && !isAsciiDigit(text.front());
}

// The width of the box's arrows alone, without room for its own number.
int arrowsWidth(const QSpinBox& box) {
    QStyleOptionSpinBox option;
    option.initFrom(&box);
    option.rect = QRect(QPoint(0, 0), box.sizeHint());
    option.subControls = QStyle::SC_All;
    const QRect number =
        box.style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxEditField, &box);
    return option.rect.width() - number.width();
}

// An empty box has no number; it counts as 0.
qint32 ordinalOf(const QString& text) {
    bool ok = false;
    const qint32 value = text.toInt(&ok);
    return ok ? value : 0;
}

} // namespace

frmKeySelector::frmKeySelector(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmKeySelector"));
    setWindowTitle(tr("Select Key Field"));
    createControls();
    layoutControls();
    mOrvane::ShowWhenNoHost(*this);
}

frmKeySelector::~frmKeySelector() = default;

void frmKeySelector::createControls() {
    lblField = new QLabel(tr("Field:"), this);
    lblField->setObjectName(QStringLiteral("lblField"));
    txtField = new QLineEdit(this);
    txtField->setObjectName(QStringLiteral("txtField"));
    txtField->setToolTip(tr("Key Field"));
    txtField->setReadOnly(true);
    cmdSelect = new QPushButton(QStringLiteral("..."), this);
    cmdSelect->setObjectName(QStringLiteral("cmdSelect"));
    cmdSelect->setToolTip(tr("Select field"));
    cmdSelect->setAutoDefault(false);
    cmdSelect->setFixedWidth(cmdSelect->sizeHint().height());

    lblOrdinal = new QLabel(tr("Ordinal:"), this);
    lblOrdinal->setObjectName(QStringLiteral("lblOrdinal"));
    txtOrdinal = new QLineEdit(this);
    txtOrdinal->setObjectName(QStringLiteral("txtOrdinal"));
    // Keystrokes are filtered below; the validator keeps pasted text to digits as well.
    txtOrdinal->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), txtOrdinal));
    txtOrdinal->installEventFilter(this);
    udOrdinal = new QSpinBox(this);
    udOrdinal->setObjectName(QStringLiteral("udOrdinal"));
    udOrdinal->setToolTip(tr("Select Key Ordinal"));
    udOrdinal->setRange(MinOrdinal, MaxOrdinal);
    udOrdinal->setFocusPolicy(Qt::NoFocus);
    udOrdinal->setFixedWidth(arrowsWidth(*udOrdinal));

    cmdOk = new QPushButton(tr("&OK"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    cmdOk->setDefault(true);

    connect(cmdSelect, &QPushButton::clicked, this,
            [this] { mOrvane::RunReported(*this, [this] { selectField(); }); });
    connect(txtOrdinal, &QLineEdit::textChanged, this, &frmKeySelector::ordinalTextChanged);
    connect(udOrdinal, &QSpinBox::valueChanged, this,
            [this](int value) { txtOrdinal->setText(QString::number(value)); });
    connect(cmdOk, &QPushButton::clicked, this,
            [this] { mOrvane::RunReported(*this, [this] { confirm(); }); });
    connect(cmdCancel, &QPushButton::clicked, this, &frmKeySelector::reject);
}

void frmKeySelector::layoutControls() {
    lblField->setBuddy(txtField);
    lblOrdinal->setBuddy(txtOrdinal);
    auto* grid = new QGridLayout;
    grid->addWidget(lblField, 0, 0);
    grid->addWidget(txtField, 0, 1);
    grid->addWidget(cmdSelect, 0, 2);
    grid->addWidget(lblOrdinal, 1, 0);
    auto* ordinalRow = new QHBoxLayout;
    ordinalRow->setSpacing(0);
    ordinalRow->addWidget(txtOrdinal);
    ordinalRow->addWidget(udOrdinal);
    ordinalRow->addStretch(1);
    grid->addLayout(ordinalRow, 1, 1, 1, 2);
    grid->setColumnStretch(1, 1);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdOk, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);

    auto* page = new QVBoxLayout(this);
    page->addLayout(grid);
    page->addStretch(1);
    page->addWidget(buttons);
}

void frmKeySelector::Initialize(qint32 ordinal, qint32 fieldId) {
    m_initialOrdinal = ordinal;
    if (ordinal > 0)
        setOrdinal(ordinal);
    m_fieldId = fieldId;
    m_keyField = fieldId > 0 ? HostRegistry::FieldInfo().FieldById(AppGroup, fieldId) : nullptr;
    txtField->setText(FieldName());
    cmdOk->setEnabled(false);
}

void frmKeySelector::setOrdinal(qint32 ordinal) {
    {
        const QSignalBlocker blocker(udOrdinal);
        udOrdinal->setValue(ordinal);
    }
    txtOrdinal->setText(ordinal > 0 ? QString::number(ordinal) : QString());
}

qint32 frmKeySelector::FieldId() const {
    if (m_fieldCategory && m_keyField)
        return m_keyField->Field_Id();
    return m_fieldId;
}

qint32 frmKeySelector::EntityID() const {
    return m_fieldCategory ? m_fieldCategory->Entity_Id() : 0;
}

QString frmKeySelector::FieldName() const {
    if (!m_keyField)
        return QString();
    return m_keyField->Entity_Label() + QStringLiteral(": ") + m_keyField->Field_Name();
}

void frmKeySelector::reject() {
    m_cancel = true;
    QDialog::reject();
}

bool frmKeySelector::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtOrdinal && event->type() == QEvent::KeyPress &&
        isDiscardedKeystroke(static_cast<const QKeyEvent&>(*event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

void frmKeySelector::ordinalTextChanged(const QString& text) {
    m_ordinal = ordinalOf(text);
    {
        // The arrows follow the box; out-of-range numbers leave them at their nearest end.
        const QSignalBlocker blocker(udOrdinal);
        udOrdinal->setValue(m_ordinal);
    }
    cmdOk->setEnabled(true);
}

void frmKeySelector::selectField() {
    const QString title =
        m_fieldCategory ? tr("Update Key Field Selection") : tr("Select Key Field");
    const std::shared_ptr<IEntity> entity = m_columns ? m_columns->Entity() : nullptr;
    FSelectEntityTree tree(this);
    tree.Initialize(title, FSelectEntityTree::EntityAndFieldMode,
                    entity ? entity->Entity_Name() : QString(), FieldId());
    HostRegistry::App().ShowModal(tree);
    if (!tree.Ok())
        return;
    m_fieldCategory = tree.FieldCategory();
    m_keyField = tree.Field();
    txtField->setText(FieldName());
    cmdOk->setEnabled(true);
}

void frmKeySelector::confirm() {
    if (m_ordinal < MinOrdinal || m_ordinal > MaxOrdinal) {
        refuse(tr("A unique Ordinal between 1 and 500 must be chosen."), txtOrdinal);
        return;
    }
    if (m_ordinal != m_initialOrdinal && ordinalInUse()) {
        refuse(tr("Ordinal %1 is already in use").arg(m_ordinal), txtOrdinal);
        return;
    }
    if (FieldName().isEmpty()) {
        refuse(tr("A key field has not been selected"), cmdSelect);
        return;
    }
    m_cancel = false;
    accept();
}

// A live key column other than the one being edited that already holds the new ordinal.
bool frmKeySelector::ordinalInUse() const {
    if (!m_columns)
        return false;
    for (const auto& column : *m_columns) {
        if (column->Is_Key() && !column->ColumnDeleted() &&
            column->Key_Ordinal() != m_initialOrdinal && column->Key_Ordinal() == m_ordinal)
            return true;
    }
    return false;
}

void frmKeySelector::refuse(const QString& message, QWidget* focus) {
    HostRegistry::App().MsgBox(message, MsgBoxButtons::OKOnly, MsgBoxIcon::None, windowTitle());
    focus->setFocus();
}

} // namespace Orvane
