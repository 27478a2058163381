#include "orvane/dialogs/fFieldInfo.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/IEntity.h"
#include "orvane/host/IField.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/host/XTechnologies.h"
#include "orvane/model/ColumnSave.h"
#include "orvane/model/DataTypes.h"
#include "orvane/model/FieldNameRule.h"
#include "orvane/widgets/ControlState.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"

#include <QComboBox>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>

namespace Orvane {

namespace {

const QString AppGroup = QStringLiteral("Traffic");
const char* const SaveTitle = QT_TRANSLATE_NOOP("Orvane::fFieldInfo", "Creating new EDS field");

// Style bits of a field and the font attribute each gives the sample.
constexpr qint32 BoldBit = 1;
constexpr qint32 ItalicBit = 2;
constexpr qint32 UnderlineBit = 4;

// The host reports a taken name as error code 2 with its flag set.
constexpr qint32 NameTakenCode = 2;

QString dataTypeCode(const QString& word) {
    return mOrvane::FieldDataTypes.contains(word) ? word.left(1) : QString();
}

QString dataTypeWord(const QString& code) {
    for (const QString& word : mOrvane::FieldDataTypes) {
        if (word.left(1) == code)
            return word;
    }
    return QString();
}

// A list whose drop-down part reports that it opens: opening it counts as an edit.
class DropDownList final : public QComboBox {
public:
    using QComboBox::QComboBox;
    std::function<void()> onDropDown;

    void showPopup() override {
        if (onDropDown)
            onDropDown();
        QComboBox::showPopup();
    }
};

// The colour a host stores puts red in the low byte, then green, then blue.
QColor hostColour(qint32 value) {
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}

template <typename T> T* named(T* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

// A caption row whose mnemonic moves the focus to its control.
void addRow(QFormLayout& form, QLabel* label, QWidget* field) {
    label->setBuddy(field);
    form.addRow(label, field);
}

QString nameRuleMessage(qint32 maxLength) {
    return fFieldInfo::tr("A Field name must have at least 1 but no more than ") +
           QString::number(maxLength) + fFieldInfo::tr(" characters") + MsgBoxLineBreak +
           fFieldInfo::tr("and first character must begin with alphabet or _ and subsequent ") +
           MsgBoxLineBreak + fFieldInfo::tr("character can be alphanumeric, % or _ only.");
}

} // namespace

fFieldInfo::fFieldInfo(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("fFieldInfo"));
    setWindowTitle(tr("Field Editor"));
    createControls();
    layoutControls();
    connectEdits();
    if (!mOrvane::ShowWhenNoHost(*this))
        load();
}

fFieldInfo::~fFieldInfo() {
    if (!m_registered)
        return;
    // The host may already have gone at shutdown; then there is nothing left to withdraw from.
    try {
        HostRegistry::App().UnregisterForm(this);
    } catch (const Error&) {
    }
}

QString fFieldInfo::IAppForm_HelpContextName() const {
    return QStringLiteral("fFieldInfo");
}

bool fFieldInfo::IsValidFieldName(const QString& name, qint32 maxLength) {
    return name.size() <= maxLength && mOrvane::FollowsFieldNameRule(name);
}

// Controls

void fFieldInfo::createControls() {
    lblName = named(new QLabel(tr("&Name: "), this), "lblName");
    txtName = named(new QLineEdit(this), "txtName");
    lblDescription = named(new QLabel(tr("&Description: "), this), "lblDescription");
    txtDescription = named(new QLineEdit(this), "txtDescription");
    lblHeadingRow1 = named(new QLabel(tr("Heading Line &1: "), this), "lblHeadingRow1");
    txtHeadingRow1 = named(new QLineEdit(this), "txtHeadingRow1");
    lblHeadingRow2 = named(new QLabel(tr("Heading Line &2: "), this), "lblHeadingRow2");
    txtHeadingRow2 = named(new QLineEdit(this), "txtHeadingRow2");
    lblDataType = named(new QLabel(tr("D&ata Type: "), this), "lblDataType");
    cboDataType = createList("cboDataType");
    lblTimeAggregator = named(new QLabel(tr("&Time Aggregator:"), this), "lblTimeAggregator");
    cboTimeAggregator = createList("cboTimeAggregator");
    lblElementAggregator =
        named(new QLabel(tr("&Element Aggregator: "), this), "lblElementAggregator");
    cboElementAggregator = createList("cboElementAggregator");

    lblExt << named(new QLabel(tr("Extra Column:"), this), "lblExt(0)");
    txtExt << named(new QLineEdit(this), "txtExt(0)");
    lblExt.front()->hide();
    txtExt.front()->hide();

    lblTechnology = named(new QLabel(tr("T&echnologies:"), this), "lblTechnology");
    xTech = named(mOrvane::CreateTechnologies(this), "xTech");
    lblStyle = named(new QLabel(tr("Field &Style:"), this), "lblStyle");
    txtStyle = named(new QLineEdit(tr("Sample"), this), "txtStyle");
    txtStyle->setReadOnly(true);
    txtStyle->installEventFilter(this);
    cmdStyle = named(new QPushButton(QStringLiteral("..."), this), "cmdStyle");
    cmdStyle->setToolTip(tr("Field Style"));
    cmdStyle->setAutoDefault(false);
    cmdStyle->setFixedWidth(cmdStyle->sizeHint().height());

    cmdOk = named(new QPushButton(tr("&OK"), this), "cmdOk");
    cmdCancel = named(new QPushButton(tr("&Cancel"), this), "cmdCancel");
    cmdHelp = named(new QPushButton(tr("&Help"), this), "cmdHelp");
    cmdCancel->setAutoDefault(false);
    cmdHelp->setAutoDefault(false);
    cmdOk->setDefault(true);
}

void fFieldInfo::layoutControls() {
    auto* form = new QFormLayout;
    addRow(*form, lblName, txtName);
    addRow(*form, lblDescription, txtDescription);
    addRow(*form, lblHeadingRow1, txtHeadingRow1);
    addRow(*form, lblHeadingRow2, txtHeadingRow2);
    addRow(*form, lblDataType, cboDataType);
    addRow(*form, lblTimeAggregator, cboTimeAggregator);
    addRow(*form, lblElementAggregator, cboElementAggregator);
    m_extraRow = form->rowCount();
    addRow(*form, lblTechnology, xTech);
    auto* styleRow = new QHBoxLayout;
    styleRow->addWidget(txtStyle, 1);
    styleRow->addWidget(cmdStyle);
    lblStyle->setBuddy(cmdStyle);
    form->addRow(lblStyle, styleRow);

    m_buttons = new QDialogButtonBox(this);
    m_buttons->addButton(cmdOk, QDialogButtonBox::AcceptRole);
    m_buttons->addButton(cmdCancel, QDialogButtonBox::RejectRole);
    m_buttons->addButton(cmdHelp, QDialogButtonBox::HelpRole);

    auto* page = new QVBoxLayout(this);
    page->addLayout(form);
    page->addStretch(1);
    page->addWidget(m_buttons);
    m_form = form;
}

QComboBox* fFieldInfo::createList(const char* name) {
    auto* list = named(new DropDownList(this), name);
    list->onDropDown = [this] { markModified(); };
    return list;
}

void fFieldInfo::addExtraColumnPair(const QString& column, const QString& value) {
    const QString index = QString::number(lblExt.size());
    auto* label = new QLabel(column + QLatin1Char(':'), this);
    label->setObjectName(QStringLiteral("lblExt(%1)").arg(index));
    auto* box = new QLineEdit(value, this);
    box->setObjectName(QStringLiteral("txtExt(%1)").arg(index));
    connect(box, &QLineEdit::textChanged, this, &fFieldInfo::markModified);
    lblExt << label;
    txtExt << box;
    label->setBuddy(box);
    m_form->insertRow(m_extraRow++, label, box);
}

void fFieldInfo::connectEdits() {
    for (QLineEdit* box : {txtName, txtDescription, txtHeadingRow1, txtHeadingRow2})
        connect(box, &QLineEdit::textChanged, this, &fFieldInfo::markModified);
    connect(xTech, &XTechnologies::Changed, this, &fFieldInfo::markModified);
    connect(cboTimeAggregator, &QComboBox::activated, this, [this] {
        reported([this] { coupleAggregators(*cboTimeAggregator, *cboElementAggregator); });
    });
    connect(cboElementAggregator, &QComboBox::activated, this, [this] {
        reported([this] { coupleAggregators(*cboElementAggregator, *cboTimeAggregator); });
    });
    connect(cmdStyle, &QPushButton::clicked, this, [this] { reported([this] { chooseStyle(); }); });
    connect(cmdOk, &QPushButton::clicked, this, &fFieldInfo::confirm);
    connect(cmdCancel, &QPushButton::clicked, this, &fFieldInfo::cancel);
    connect(cmdHelp, &QPushButton::clicked, this,
            [this] { HostRegistry::App().ShowHelp(IAppForm_HelpContextName()); });
}

// Form load: announce the form, limit the texts, and report a failure instead of raising it.
void fFieldInfo::load() {
    try {
        HostRegistry::App().RegisterForm(this);
        m_registered = true;
        m_limits = HostRegistry::FieldInfo().TextLimits();
        const std::pair<QLineEdit*, qint32> limits[] = {{txtName, m_limits.name},
                                                        {txtDescription, m_limits.description},
                                                        {txtHeadingRow1, m_limits.heading1},
                                                        {txtHeadingRow2, m_limits.heading2}};
        for (const auto& [box, limit] : limits) {
            if (limit > 0)
                box->setMaxLength(limit);
        }
        m_modified = false;
        m_isLoadOk = true;
    } catch (const Error& error) {
        m_isLoadOk = false;
        HostRegistry::App().MsgBox(error.message(), MsgBoxButtons::OKOnly, MsgBoxIcon::None,
                                   tr("Loading Field Editor"));
    }
}

// Initialisation

void fFieldInfo::InitializeForNew(std::shared_ptr<IEntity> entity, const QString& dataType,
                                  std::shared_ptr<IField> field) {
    m_entity = std::move(entity);
    m_isNew = field == nullptr;
    m_ownerId = HostRegistry::App().OwnerId();
    if (field)
        readField(*field);
    else
        clearMembers(dataType);
    m_field = std::move(field);
    layoutAndFill();
    m_modified = false;
}

void fFieldInfo::readField(const IField& field) {
    m_name = field.Field_Name();
    m_description = field.Description();
    m_heading1 = field.Heading1();
    m_heading2 = field.Heading2();
    m_timeAggregator = field.TimeAggregator();
    m_elementAggregator = field.ElementAggregator();
    m_technologies = field.Technologies();
    m_dataType = dataTypeWord(field.DataType());
    m_extraColumns.clear();
    for (const ExtraColumn& column : HostRegistry::FieldInfo().ExtraColumns(AppGroup))
        m_extraColumns.append({column.name, field.ExtraColumnValue(column.name)});
    m_fieldId = field.Field_Id();
    m_style = field.Style();
    m_styleColour = field.StyleColour();
}

void fFieldInfo::clearMembers(const QString& dataType) {
    m_name.clear();
    m_description.clear();
    m_heading1.clear();
    m_heading2.clear();
    m_timeAggregator.clear();
    m_elementAggregator.clear();
    m_technologies.clear();
    m_dataType = dataType;
}

void fFieldInfo::layoutAndFill() {
    IFieldInfoService& fieldInfo = HostRegistry::FieldInfo();
    applyAggregatorMode();
    for (const ExtraColumn& column : fieldInfo.ExtraColumns(AppGroup)) {
        if (column.inUse)
            addExtraColumnPair(column.name, extraValue(m_extraColumns, column.name));
    }
    txtName->setText(m_name);
    txtDescription->setText(m_description);
    txtHeadingRow1->setText(m_heading1);
    txtHeadingRow2->setText(m_heading2);

    const QStringList aggregators = fieldInfo.AggregatorNames();
    cboTimeAggregator->addItems(aggregators);
    cboElementAggregator->addItems(aggregators);
    fillAggregatorList(*cboTimeAggregator, m_timeAggregator);
    fillAggregatorList(*cboElementAggregator, m_elementAggregator);
    fillDataTypeList();

    xTech->Initialize();
    xTech->setTechnologies(m_technologies);
    setWindowTitle(caption());
    applyEditPermission();
    refreshStyleSample();
}

void fFieldInfo::applyAggregatorMode() {
    m_elementAggregation = HostRegistry::FieldInfo().ElementAggregationOffered();
    if (m_elementAggregation)
        return;
    lblTimeAggregator->setText(tr("Aggrega&tor:"));
    m_form->setRowVisible(cboElementAggregator, false);
    m_elementAggregator.clear();
}

void fFieldInfo::fillAggregatorList(QComboBox& list, const QString& stored) {
    list.setCurrentIndex(qMax(0, list.findText(stored, Qt::MatchExactly)));
}

void fFieldInfo::fillDataTypeList() {
    cboDataType->addItems(mOrvane::FieldDataTypes);
    cboDataType->setCurrentIndex(qMax(0, cboDataType->findText(m_dataType, Qt::MatchExactly)));
}

// The permission governs every control but the name box, which stays enabled, and the buttons
// that close the dialog or show help, which are no edits. A field's type never changes here.
void fFieldInfo::applyEditPermission() {
    const bool permission = HostRegistry::App().EditPermission();
    mOrvane::SetControlsEnabled(this, permission);
    txtName->setEnabled(true);
    lblName->setEnabled(true);
    m_buttons->setEnabled(true);
    cmdOk->setEnabled(permission);
    cboDataType->setEnabled(false);
}

QString fFieldInfo::caption() const {
    if (m_isNew)
        return tr("Create New Data Source Field For ") + entityName();
    return tr(" Update Data Source Field ") + entityName() + QStringLiteral(": ") + m_name;
}

// Bit 1 makes the sample bold, bit 2 italic and bit 4 underlined; the colour is the text's.
void fFieldInfo::refreshStyleSample() {
    QFont font = txtStyle->font();
    font.setBold(m_style & BoldBit);
    font.setItalic(m_style & ItalicBit);
    font.setUnderline(m_style & UnderlineBit);
    txtStyle->setFont(font);
    QPalette palette = txtStyle->palette();
    palette.setColor(QPalette::Text, hostColour(m_styleColour));
    txtStyle->setPalette(palette);
}

// Edits

bool fFieldInfo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtStyle && event->type() == QEvent::MouseButtonDblClick) {
        reported([this] { chooseStyle(); });
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void fFieldInfo::chooseStyle() {
    qint32 style = m_style;
    qint32 styleColour = m_styleColour;
    if (!HostRegistry::FieldInfo().ChooseStyle(style, styleColour, this))
        return;
    m_style = style;
    m_styleColour = styleColour;
    markModified();
    refreshStyleSample();
}

void fFieldInfo::coupleAggregators(QComboBox& picked, QComboBox& other) {
    const auto pair = HostRegistry::FieldInfo().AggregationPairId(cboTimeAggregator->currentText(),
                                                                  elementAggregatorText());
    if (!pair)
        other.setCurrentIndex(other.findText(picked.currentText(), Qt::MatchExactly));
}

QString fFieldInfo::elementAggregatorText() const {
    return m_elementAggregation ? cboElementAggregator->currentText() : QString();
}

void fFieldInfo::cancel() {
    m_ok = false;
    reject();
}

// OK

void fFieldInfo::confirm() {
    if (!m_isNew && !m_modified) {
        cancel();
        return;
    }
    bool valid = false;
    if (!reported([this, &valid] { valid = validate(); }))
        txtName->setFocus(); // the name could not be checked against the dictionary
    if (!valid)
        return;
    reported([this] {
        rebuildExtraColumns();
        takeMembersFromForm();
        save();
    });
}

bool fFieldInfo::reported(const std::function<void()>& handler) {
    return mOrvane::RunReported(*this, handler);
}

bool fFieldInfo::validate() {
    IFieldInfoService& fieldInfo = HostRegistry::FieldInfo();
    const QString name = txtName->text().trimmed();
    if (!IsValidFieldName(name, m_limits.name))
        return refuse(nameRuleMessage(m_limits.name), txtName);
    if (xTech->TechnologyMask() == 0)
        return refuse(tr("A Field must be associated with at least one technology type.") +
                          MsgBoxLineBreak +
                          tr("Please select one or more technology types for this Field. "),
                      xTech);
    if (txtName->isEnabled() && ColumnSave::FieldNameInUse(name, entityId(), m_fieldId))
        return refuse(tr("A Field with this name already exists. ") + MsgBoxLineBreak +
                          tr("Please select another name"),
                      txtName);
    if (!fieldInfo.AggregationPairId(cboTimeAggregator->currentText(), elementAggregatorText()))
        return refuse(tr("Field's time aggregation and element aggregation is not a "
                         "valid choice.") +
                          MsgBoxLineBreak +
                          tr("Please check your aggregation selection and try again. "),
                      cboTimeAggregator);
    return true;
}

// Shows a validation message under the dialog's caption and returns false.
bool fFieldInfo::refuse(const QString& message, QWidget* focus) {
    HostRegistry::App().MsgBox(message, MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, windowTitle());
    focus->setFocus();
    return false;
}

void fFieldInfo::rebuildExtraColumns() {
    m_extraColumns.clear();
    qsizetype next = 1;
    for (const ExtraColumn& column : HostRegistry::FieldInfo().ExtraColumns(AppGroup)) {
        QString value;
        if (column.inUse && next < txtExt.size())
            value = txtExt.at(next++)->text();
        m_extraColumns.append({column.name, value});
    }
}

void fFieldInfo::takeMembersFromForm() {
    m_name = txtName->text().trimmed();
    m_description = txtDescription->text();
    m_heading1 = txtHeadingRow1->text();
    m_heading2 = txtHeadingRow2->text();
    m_timeAggregator = cboTimeAggregator->currentText();
    m_elementAggregator = elementAggregatorText();
    m_dataType = cboDataType->currentText();
    m_technologies = xTech->Technologies();
}

void fFieldInfo::save() {
    IFieldInfoService& fieldInfo = HostRegistry::FieldInfo();
    if (!m_field)
        m_field = fieldInfo.NewField();

    FieldSaveRequest request;
    request.fieldId = m_fieldId;
    request.name = m_name;
    request.entityId = entityId();
    request.appGroup = AppGroup;
    request.kind = QStringLiteral("X");
    request.technologyMask = xTech->TechnologyMask();
    request.dataTypeCode = dataTypeCode(m_dataType);
    request.reserved = -1;
    request.heading1 = m_heading1;
    request.heading2 = m_heading2;
    request.description = m_description;
    request.aggregationPairId =
        fieldInfo.AggregationPairId(m_timeAggregator, m_elementAggregator).value_or(0);
    request.ownerId = m_ownerId;
    request.note1 = QString();
    request.savedAt = QDateTime::currentDateTime();
    request.note2 = QString();
    request.extraColumns = m_extraColumns;
    request.option = 0;
    request.style = m_style;
    request.styleColour = m_styleColour;

    QVariant result;
    bool saved = false;
    try {
        saved = m_field->Save(request, result);
    } catch (const Error& error) {
        reportSaveFailure(0, false, error.message());
        return;
    }
    if (!saved) {
        const FieldSaveError error = m_field->LastError();
        reportSaveFailure(error.code, error.flag, error.description);
        return;
    }
    m_ok = true;
    accept();
}

void fFieldInfo::reportSaveFailure(qint32 code, bool flag, const QString& description) {
    IApplication& app = HostRegistry::App();
    if (code == NameTakenCode && flag) {
        app.MsgBox(tr("A field with the name you specified already exists. ") + MsgBoxLineBreak +
                       tr("Please specify a different name."),
                   MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr(SaveTitle));
        txtName->setFocus();
        return;
    }
    app.MsgBox(tr("Unable to save New Field.") + MsgBoxLineBreak + description,
               MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr(SaveTitle));
}

// Helpers

qint32 fFieldInfo::entityId() const {
    return m_entity ? m_entity->Entity_Id() : 0;
}

QString fFieldInfo::entityName() const {
    return m_entity ? m_entity->Entity_Name() : QString();
}

QString fFieldInfo::extraValue(const ExtraValues& values, const QString& column) {
    for (const auto& [name, value] : values) {
        if (name == column)
            return value;
    }
    return QString();
}

} // namespace Orvane
