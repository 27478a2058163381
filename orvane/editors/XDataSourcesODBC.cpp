#include "orvane/editors/XDataSourcesODBC.h"

#include "orvane/widgets/NoHostNotice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace Orvane {

namespace {

// The least width that still shows usable boxes; the height is the layout's.
constexpr QSize LeastSize(381, 0);

} // namespace

XDataSourcesODBC::XDataSourcesODBC(QWidget* parent)
    : SourceSettingsEditor(parent, LeastSize) {
    setObjectName(QStringLiteral("XDataSourcesODBC"));
    createControls();
    layoutControls();
    orderTabs();
    applyFrequencyRule();
    mOrvane::ShowWhenNoHost(*this);
}

XDataSourcesODBC::~XDataSourcesODBC() = default;

// Each frame holds its boxes, then their labels; the boxes in the order IsValid walks them.
void XDataSourcesODBC::createControls() {
    fraDatabase = createFrame(QStringLiteral("fraDatabase"), QStringLiteral("Source"));
    txtDB_Table = createSettingBox(QStringLiteral("txtDB_Table"), fraDatabase);
    txtDB_Database = createSettingBox(QStringLiteral("txtDB_Database"), fraDatabase);
    txtDB_Server = createSettingBox(QStringLiteral("txtDB_Server"), fraDatabase);
    lblTable = createLabel(QStringLiteral("lblTable"), QStringLiteral("Table:"), fraDatabase);
    lblDatabase =
        createLabel(QStringLiteral("lblDatabase"), QStringLiteral("Database:"), fraDatabase);
    lblServer = createLabel(QStringLiteral("lblServer"), QStringLiteral("Server:"), fraDatabase);
    fraLogin = createFrame(QStringLiteral("fraLogin"), QStringLiteral("Login"));
    txtDB_Password = createSettingBox(QStringLiteral("txtDB_Password"), fraLogin);
    txtDB_Password->setEchoMode(QLineEdit::Password);
    txtDB_UserId = createSettingBox(QStringLiteral("txtDB_UserId"), fraLogin);
    lblPass = createLabel(QStringLiteral("lblPass"), QStringLiteral("Password:"), fraLogin);
    lblUser = createLabel(QStringLiteral("lblUser"), QStringLiteral("UserId:"), fraLogin);
    createTimeSeriesBox(this);
    createFrequencyBox(this, QStringLiteral("Select data frequency"));
    createFrequencyLabel(this);
}

QGroupBox* XDataSourcesODBC::createFrame(const QString& name, const QString& caption) {
    auto* frame = new QGroupBox(caption, this);
    frame->setObjectName(name);
    return frame;
}

QLineEdit* XDataSourcesODBC::createSettingBox(const QString& name, QWidget* frame) {
    QLineEdit* textBox = createTextBox(name, QString(), frame);
    connect(textBox, &QLineEdit::textChanged, this, [this] { raiseChange(false); });
    m_textBoxes.append(textBox);
    return textBox;
}

// The screen shows Server, Database, Table, UserId, Password from the top; the keyboard follows.
void XDataSourcesODBC::orderTabs() {
    const QList<QWidget*> order = {txtDB_Server,   txtDB_Database, txtDB_Table, txtDB_UserId,
                                   txtDB_Password, ckTimeSeries,   cboFrequency};
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order.at(i - 1), order.at(i));
}

QString XDataSourcesODBC::Server() const {
    return trimmedText(txtDB_Server);
}

void XDataSourcesODBC::setServer(const QString& value) {
    setTrimmedText(txtDB_Server, value);
}

QString XDataSourcesODBC::Database() const {
    return trimmedText(txtDB_Database);
}

void XDataSourcesODBC::setDatabase(const QString& value) {
    setTrimmedText(txtDB_Database, value);
}

QString XDataSourcesODBC::Table() const {
    return trimmedText(txtDB_Table);
}

void XDataSourcesODBC::setTable(const QString& value) {
    setTrimmedText(txtDB_Table, value);
}

QString XDataSourcesODBC::UserId() const {
    return trimmedText(txtDB_UserId);
}

void XDataSourcesODBC::setUserId(const QString& value) {
    setTrimmedText(txtDB_UserId, value);
}

QString XDataSourcesODBC::Password() const {
    return trimmedText(txtDB_Password);
}

void XDataSourcesODBC::setPassword(const QString& value) {
    setTrimmedText(txtDB_Password, value);
}

void XDataSourcesODBC::InitializeDefaults() {
    QScopedValueRollback<bool> loading(Loading, true);
    fillFrequencies();
    showTimeSeriesDefaults();
    for (QLineEdit* textBox : m_textBoxes)
        textBox->clear();
}

void XDataSourcesODBC::Initialize(bool bIsTimeSeries, qint32 lFreq, const QString& sServer,
                                  const QString& sSchema, const QString& sTable,
                                  const QString& sUserId, const QString& sPassword) {
    QScopedValueRollback<bool> loading(Loading, true);
    fillFrequencies();
    showTimeSeries(bIsTimeSeries, lFreq);
    setServer(sServer);
    setDatabase(sSchema);
    setTable(sTable);
    setUserId(sUserId);
    setPassword(sPassword);
    // Unlike the ASCII editor, the frequency rule is not applied again: with the permission the
    // frequency box stays enabled even beside an unchecked box, until the box is next clicked.
    applyEditPermission();
}

bool XDataSourcesODBC::IsValid(const QString& sMsgBoxTitle) {
    // The titles of this editor append a colon, a blank and the kind of error.
    if (frequencyMissing()) {
        reportInvalid(QStringLiteral("A time series frequency must be selected"),
                      sMsgBoxTitle + QStringLiteral(": Frequency Selection Missing"), cboFrequency);
        return false;
    }
    // Only the server and the table are required, checked in the order the control holds them,
    // so the table is reported first. The message names the box without its "txtDB_" prefix.
    for (QLineEdit* textBox : {txtDB_Table, txtDB_Server}) {
        if (textBox->text().isEmpty()) {
            reportInvalid(QStringLiteral("Please enter ") + textBox->objectName().mid(6),
                          sMsgBoxTitle + QStringLiteral(": Required Information is Missing"),
                          textBox);
            return false;
        }
    }
    return true;
}

void XDataSourcesODBC::timeSeriesClicked(bool) {
    applyFrequencyRule();
    raiseChange(true);
}

// Server, Database and Table from the top in "Source", UserId above Password in "Login",
// the time series last.
void XDataSourcesODBC::layoutControls() {
    layoutFrame(
        fraDatabase,
        {{lblServer, txtDB_Server}, {lblDatabase, txtDB_Database}, {lblTable, txtDB_Table}});
    layoutFrame(fraLogin, {{lblUser, txtDB_UserId}, {lblPass, txtDB_Password}});
    auto* page = new QVBoxLayout(this);
    page->addWidget(fraDatabase);
    page->addWidget(fraLogin);
    page->addLayout(timeSeriesRow());
    page->addStretch(1);
}

void XDataSourcesODBC::layoutFrame(QGroupBox* frame,
                                   std::initializer_list<std::pair<QLabel*, QLineEdit*>> rows) {
    auto* form = new QFormLayout(frame);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (auto [label, textBox] : rows) {
        label->setBuddy(textBox);
        form->addRow(label, textBox);
    }
}

} // namespace Orvane
