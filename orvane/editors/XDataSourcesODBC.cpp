#include "orvane/editors/XDataSourcesODBC.h"

#include "orvane/host/BusyPointer.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"
#include "orvane/widgets/TablePicker.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QToolButton>
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
    createCatalogButtons();
    layoutControls();
    orderTabs();
    applyFrequencyRule();
    showCatalogControls();
    mOrvane::ShowWhenNoHost(*this);
}

XDataSourcesODBC::~XDataSourcesODBC() = default;

// Each frame holds its boxes, then their labels; the boxes in the order IsValid walks them.
void XDataSourcesODBC::createControls() {
    fraDatabase = createFrame(QStringLiteral("fraDatabase"), tr("Source"));
    txtDB_Table = createSettingBox(QStringLiteral("txtDB_Table"), fraDatabase);
    txtDB_Database = createSettingBox(QStringLiteral("txtDB_Database"), fraDatabase);
    txtDB_Server = createSettingBox(QStringLiteral("txtDB_Server"), fraDatabase);
    lblTable = createLabel(QStringLiteral("lblTable"), tr("Table:"), fraDatabase);
    lblDatabase = createLabel(QStringLiteral("lblDatabase"), tr("Database:"), fraDatabase);
    lblServer = createLabel(QStringLiteral("lblServer"), tr("Server:"), fraDatabase);
    fraLogin = createFrame(QStringLiteral("fraLogin"), tr("Login"));
    txtDB_Password = createSettingBox(QStringLiteral("txtDB_Password"), fraLogin);
    txtDB_Password->setEchoMode(QLineEdit::Password);
    txtDB_UserId = createSettingBox(QStringLiteral("txtDB_UserId"), fraLogin);
    lblPass = createLabel(QStringLiteral("lblPass"), tr("Password:"), fraLogin);
    lblUser = createLabel(QStringLiteral("lblUser"), tr("UserId:"), fraLogin);
    createTimeSeriesBox(this);
    createFrequencyBox(this, tr("Select data frequency"));
    createFrequencyLabel(this);

    notifyTrimmedChanges(txtDB_Server, [this](const QString& v) { emit ServerChanged(v); });
    notifyTrimmedChanges(txtDB_Database, [this](const QString& v) { emit DatabaseChanged(v); });
    notifyTrimmedChanges(txtDB_Table, [this](const QString& v) { emit TableChanged(v); });
    notifyTrimmedChanges(txtDB_UserId, [this](const QString& v) { emit UserIdChanged(v); });
    notifyTrimmedChanges(txtDB_Password, [this](const QString& v) { emit PasswordChanged(v); });
}

// After the controls of the settings, so that their order stays what IsValid walks.
void XDataSourcesODBC::createCatalogButtons() {
    cmdTables = new QToolButton(fraDatabase);
    cmdTables->setText(QStringLiteral("..."));
    cmdTables->setObjectName(QStringLiteral("cmdTables"));
    cmdTables->setToolTip(tr("Choose the table from the database's list"));
    connect(cmdTables, &QToolButton::clicked, this, &XDataSourcesODBC::pickTable);
    cmdTestConnection = new QPushButton(tr("Test Connection"), fraLogin);
    cmdTestConnection->setObjectName(QStringLiteral("cmdTestConnection"));
    cmdTestConnection->setToolTip(tr("Connect with this login and disconnect"));
    connect(cmdTestConnection, &QPushButton::clicked, this, &XDataSourcesODBC::testConnection);
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
    const QList<QWidget*> order = {txtDB_Server,      txtDB_Database, txtDB_Table,
                                   cmdTables,         txtDB_UserId,   txtDB_Password,
                                   cmdTestConnection, ckTimeSeries,   cboFrequency};
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
    showCatalogControls();
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
    showCatalogControls();
}

bool XDataSourcesODBC::IsValid(const QString& sMsgBoxTitle) {
    // The titles of this editor append a colon, a blank and the kind of error.
    if (frequencyMissing()) {
        reportInvalid(tr("A time series frequency must be selected"),
                      sMsgBoxTitle + tr(": Frequency Selection Missing"), cboFrequency);
        return false;
    }
    // Only the server and the table are required, checked in the order the control holds them,
    // so the table is reported first. The message names the box without its "txtDB_" prefix.
    for (QLineEdit* textBox : {txtDB_Table, txtDB_Server}) {
        if (textBox->text().isEmpty()) {
            reportInvalid(tr("Please enter ") + textBox->objectName().mid(6),
                          sMsgBoxTitle + tr(": Required Information is Missing"), textBox);
            return false;
        }
    }
    return true;
}

ColumnDetection XDataSourcesODBC::TableDetection() const {
    ColumnDetection detection;
    if (!HostRegistry::HasSourceCatalog())
        detection.error = tr("This application cannot read the database's catalog.");
    else if (Server().isEmpty() || Table().isEmpty())
        detection.error =
            tr("Please enter %1")
                .arg((Server().isEmpty() ? txtDB_Server : txtDB_Table)->objectName().mid(6));
    if (!detection.error.isEmpty())
        return detection;
    try {
        const QList<CatalogColumn> columns =
            HostRegistry::SourceCatalog().Columns(login(), Table());
        for (qint32 i = 0; i < columns.size(); ++i)
            detection.columns.append({columns[i].name, columns[i].typeCode, i + 1});
        detection.hasHeader = true;
    } catch (const Error& failure) {
        detection.error = failure.message();
    }
    return detection;
}

SourceLogin XDataSourcesODBC::login() const {
    return {Server(), Database(), UserId(), Password()};
}

bool XDataSourcesODBC::catalogReady(const QString& title) {
    if (!HostRegistry::HasSourceCatalog()) {
        HostRegistry::App().MsgBox(tr("This application cannot read the database's catalog."),
                                   MsgBoxButtons::OKOnly, MsgBoxIcon::Exclamation, title);
        return false;
    }
    if (Server().isEmpty())
        reportInvalid(tr("Please enter %1").arg(txtDB_Server->objectName().mid(6)), title,
                      txtDB_Server);
    return !Server().isEmpty();
}

// The driver's reason is the message of a failure; the catalog keeps the password out of it.
void XDataSourcesODBC::testConnection() {
    const QString title = tr("Test Connection");
    if (!catalogReady(title))
        return;
    try {
        BusyPointer busy;
        HostRegistry::SourceCatalog().TestConnection(login());
    } catch (const Error& error) {
        HostRegistry::App().MsgBox(error.message(), MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                                   title);
        return;
    }
    HostRegistry::App().MsgBox(tr("The connection succeeded."), MsgBoxButtons::OKOnly,
                               MsgBoxIcon::Information, title);
}

// A chosen table goes into the box as typing does, change event and all.
void XDataSourcesODBC::pickTable() {
    if (!catalogReady(tr("Select Table")))
        return;
    QStringList tables;
    const bool read = mOrvane::RunReported(*this, [&] {
        BusyPointer busy;
        tables = HostRegistry::SourceCatalog().Tables(login());
    });
    if (!read)
        return;
    if (tables.isEmpty()) {
        HostRegistry::App().MsgBox(tr("The database lists no tables for this login."),
                                   MsgBoxButtons::OKOnly, MsgBoxIcon::Information,
                                   tr("Select Table"));
        return;
    }
    const QString chosen = TablePicker::Pick(tables, Table(), this);
    if (!chosen.isEmpty())
        txtDB_Table->setText(chosen);
}

void XDataSourcesODBC::timeSeriesClicked(bool) {
    applyFrequencyRule();
    raiseChange(true);
}

// Server, Database and Table from the top in "Source", UserId above Password in "Login",
// the time series last.
void XDataSourcesODBC::layoutControls() {
    layoutFrame(fraDatabase, {{lblServer, txtDB_Server},
                              {lblDatabase, txtDB_Database},
                              {lblTable, txtDB_Table, cmdTables}});
    layoutFrame(fraLogin, {{lblUser, txtDB_UserId}, {lblPass, txtDB_Password, cmdTestConnection}});
    auto* page = new QVBoxLayout(this);
    page->addWidget(fraDatabase);
    page->addWidget(fraLogin);
    page->addLayout(timeSeriesRow());
    page->addStretch(1);
}

void XDataSourcesODBC::layoutFrame(QGroupBox* frame, std::initializer_list<FrameRow> rows) {
    auto* form = new QFormLayout(frame);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const FrameRow& row : rows) {
        row.label->setBuddy(row.textBox);
        if (!row.button) {
            form->addRow(row.label, row.textBox);
            continue;
        }
        auto* line = new QHBoxLayout;
        line->addWidget(row.textBox, 1);
        line->addWidget(row.button);
        form->addRow(row.label, line);
    }
}

// Testing the login reads nothing the user could change, so it stays open without the edit
// permission; choosing a table does not.
void XDataSourcesODBC::showCatalogControls() {
    const bool catalog = HostRegistry::HasSourceCatalog();
    cmdTables->setVisible(catalog);
    cmdTestConnection->setVisible(catalog);
    cmdTestConnection->setEnabled(true);
}

} // namespace Orvane
