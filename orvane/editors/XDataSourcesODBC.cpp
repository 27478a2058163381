#include "orvane/editors/XDataSourcesODBC.h"

#include "orvane/editors/mOrvane.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <algorithm>

namespace Orvane {

namespace {

using mOrvane::TwipsToPixels;

constexpr int MinWidth = 5715;
constexpr int DesignHeight = 3075;
constexpr int FrameMargin = 120;    // a frame is this much narrower than the control
constexpr int TextBoxMargin = 1080; // and a text box this much
constexpr int FrameLeft = 60;
constexpr int BoxLeftInFrame = 930;
constexpr int LabelGap = 45;
constexpr int RowHeight = 315;
constexpr int RowSpacing = 360;
constexpr int FirstRowTop = 300;
constexpr int SourceTop = 60;
constexpr int SourceHeight = 1380;
constexpr int LoginTop = 1500;
constexpr int LoginHeight = 1020;
constexpr int TimeSeriesTop = 2640;

} // namespace

XDataSourcesODBC::XDataSourcesODBC(QWidget* parent)
    : SourceSettingsEditor(parent) {
    setObjectName(QStringLiteral("XDataSourcesODBC"));
    createControls();
    orderTabs();
    applyFrequencyRule();
    setMinimumWidth(TwipsToPixels(MinWidth));
    resize(TwipsToPixels(MinWidth), TwipsToPixels(DesignHeight));
    layoutControls();
}

XDataSourcesODBC::~XDataSourcesODBC() = default;

void XDataSourcesODBC::createControls() {
    createSourceFrame();
    lblTable = createLabel(QStringLiteral("lblTable"), QStringLiteral("Table:"), this);
    lblDatabase = createLabel(QStringLiteral("lblDatabase"), QStringLiteral("Database:"), this);
    lblServer = createLabel(QStringLiteral("lblServer"), QStringLiteral("Server:"), this);
    createLoginFrame();
    lblPass = createLabel(QStringLiteral("lblPass"), QStringLiteral("Password:"), this);
    lblUser = createLabel(QStringLiteral("lblUser"), QStringLiteral("UserId:"), this);
    for (QLabel* label : {lblTable, lblDatabase, lblServer, lblPass, lblUser})
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    createTimeSeriesBox(this);
    createFrequencyBox(this, QStringLiteral("Select data frequency"));
    createFrequencyLabel(this);
}

void XDataSourcesODBC::createSourceFrame() {
    fraDatabase = createFrame(QStringLiteral("fraDatabase"), QStringLiteral("Source"));
    txtDB_Table = createSettingBox(QStringLiteral("txtDB_Table"), fraDatabase);
    txtDB_Database = createSettingBox(QStringLiteral("txtDB_Database"), fraDatabase);
    txtDB_Server = createSettingBox(QStringLiteral("txtDB_Server"), fraDatabase);
}

void XDataSourcesODBC::createLoginFrame() {
    fraLogin = createFrame(QStringLiteral("fraLogin"), QStringLiteral("Login"));
    txtDB_Password = createSettingBox(QStringLiteral("txtDB_Password"), fraLogin);
    txtDB_Password->setEchoMode(QLineEdit::Password);
    txtDB_UserId = createSettingBox(QStringLiteral("txtDB_UserId"), fraLogin);
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

void XDataSourcesODBC::resizeEvent(QResizeEvent* event) {
    SourceSettingsEditor::resizeEvent(event);
    layoutControls();
}

void XDataSourcesODBC::layoutControls() {
    const int frameWidth = width() - TwipsToPixels(FrameMargin);
    fraDatabase->setGeometry(TwipsToPixels(FrameLeft), TwipsToPixels(SourceTop), frameWidth,
                             TwipsToPixels(SourceHeight));
    placeRow(lblServer, txtDB_Server, fraDatabase, FirstRowTop);
    placeRow(lblDatabase, txtDB_Database, fraDatabase, FirstRowTop + RowSpacing);
    placeRow(lblTable, txtDB_Table, fraDatabase, FirstRowTop + 2 * RowSpacing);
    fraLogin->setGeometry(TwipsToPixels(FrameLeft), TwipsToPixels(LoginTop), frameWidth,
                          TwipsToPixels(LoginHeight));
    placeRow(lblUser, txtDB_UserId, fraLogin, FirstRowTop);
    placeRow(lblPass, txtDB_Password, fraLogin, FirstRowTop + RowSpacing);
    ckTimeSeries->setGeometry(TwipsToPixels(120), TwipsToPixels(TimeSeriesTop), TwipsToPixels(2400),
                              TwipsToPixels(RowHeight));
    lblFreq->setGeometry(TwipsToPixels(2520), TwipsToPixels(TimeSeriesTop), TwipsToPixels(1080),
                         TwipsToPixels(RowHeight));
    cboFrequency->setGeometry(TwipsToPixels(3640), TwipsToPixels(TimeSeriesTop),
                              TwipsToPixels(1800), TwipsToPixels(RowHeight));
}

// The labels belong to the control itself and sit over the frame, ending just before their
// boxes; a font wider than the design's may take them over the frame's left edge.
void XDataSourcesODBC::placeRow(QLabel* label, QLineEdit* textBox, const QGroupBox* frame,
                                int rowTop) {
    textBox->setGeometry(TwipsToPixels(BoxLeftInFrame), TwipsToPixels(rowTop),
                         width() - TwipsToPixels(TextBoxMargin), TwipsToPixels(RowHeight));
    const int labelRight = frame->x() + TwipsToPixels(BoxLeftInFrame - LabelGap);
    const int labelWidth = std::min(labelRight, label->sizeHint().width());
    label->setGeometry(labelRight - labelWidth, frame->y() + TwipsToPixels(rowTop), labelWidth,
                       TwipsToPixels(RowHeight));
}

} // namespace Orvane
