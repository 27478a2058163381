#include "orvane/editors/XDataSourcesGen.h"

#include "orvane/editors/FileNameEdit.h"
#include "orvane/editors/FileNameValidator.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/widgets/ErrorReport.h"
#include "orvane/widgets/NoHostNotice.h"
#include "orvane/widgets/TemplateUseCheck.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <QtGlobal>

#include <utility>

namespace Orvane {

namespace {

// The entries of cboDelimeter, aligned on the symbol, and the character each one stands for.
const char* const DelimiterEntries[] = {QT_TRANSLATE_NOOP("Orvane::XDataSourcesGen", "   <space>"),
                                        QT_TRANSLATE_NOOP("Orvane::XDataSourcesGen", " : <colon>"),
                                        QT_TRANSLATE_NOOP("Orvane::XDataSourcesGen", " , <comma>"),
                                        QT_TRANSLATE_NOOP("Orvane::XDataSourcesGen", " / <slash>"),
                                        QT_TRANSLATE_NOOP("Orvane::XDataSourcesGen", "   <tab>")};
const QStringList Delimiters = {QStringLiteral(" "), QStringLiteral(":"), QStringLiteral(","),
                                QStringLiteral("/"), QStringLiteral("\t")};
constexpr int TabDelimiter = 4;

// The least size that still shows a usable path.
constexpr QSize LeastSize(413, 167);

} // namespace

XDataSourcesGen::XDataSourcesGen(QWidget* parent)
    : SourceSettingsEditor(parent, LeastSize) {
    setObjectName(QStringLiteral("XDataSourcesGen"));
    createControls();
    layoutControls();
    {
        QScopedValueRollback<bool> loading(Loading, true);
        fillDelimiters();
    }
    applyFrequencyRule();
    mOrvane::ShowWhenNoHost(*this);
}

XDataSourcesGen::~XDataSourcesGen() = default;

void XDataSourcesGen::createControls() {
    lblDesc = createLabel(QStringLiteral("lblDesc"), tr("Description:"), this);
    txtDescription =
        createTextBox(QStringLiteral("txtDescription"), tr("Enter Description of Document"), this);
    lblFile = createLabel(QStringLiteral("lblFile"), tr("File Name:"), this);
    txtFile = new FileNameEdit(this);
    txtFile->setObjectName(QStringLiteral("txtFile"));
    txtFile->setToolTip(tr("Enter file path and name"));
    lblDelimeter = createLabel(QStringLiteral("lblDelimeter"), tr("Delimeter:"), this);
    cboDelimeter = new QComboBox(this);
    cboDelimeter->setObjectName(QStringLiteral("cboDelimeter"));
    cboDelimeter->setToolTip(tr("Select Delimeter"));
    createTimeSeriesBox(this);
    createFrequencyLabel(this);
    createFrequencyBox(this, QString());
    // Created last, so the tab order of the settings stays as it was and Browse... follows it.
    cmdBrowse = new QPushButton(tr("Browse..."), this);
    cmdBrowse->setObjectName(QStringLiteral("cmdBrowse"));
    cmdBrowse->setToolTip(tr("Choose the data file"));

    connect(txtDescription, &QLineEdit::textChanged, this, [this] { raiseChange(false); });
    // Only keystrokes count as edits of the file name, and they count even while Loading.
    connect(txtFile, &FileNameEdit::keyAccepted, this, [this] { emit dsgChange(false); });
    connect(txtFile, &QLineEdit::textChanged, this, &XDataSourcesGen::sourceEdited);
    connect(cboDelimeter, &QComboBox::currentIndexChanged, this, &XDataSourcesGen::sourceEdited);
    connect(cmdBrowse, &QPushButton::clicked, this, &XDataSourcesGen::browseForFile);
    connect(cboDelimeter, &QComboBox::currentIndexChanged, this, [this] { raiseChange(false); });

    notifyTrimmedChanges(txtDescription, [this](const QString& v) { emit DescriptionChanged(v); });
    notifyTrimmedChanges(txtFile, [this](const QString& v) { emit Eds_FileChanged(v); });
    connect(cboDelimeter, &QComboBox::currentIndexChanged, this,
            [this] { emit Eds_DelimeterChanged(Eds_Delimeter()); });
}

void XDataSourcesGen::fillDelimiters() {
    cboDelimeter->clear();
    for (const char* entry : DelimiterEntries)
        cboDelimeter->addItem(tr(entry));
    cboDelimeter->setCurrentIndex(TabDelimiter);
}

void XDataSourcesGen::setData(std::shared_ptr<CDataSourcesData> value) {
    m_data = std::move(value);
}

QString XDataSourcesGen::Eds_Description() const {
    return trimmedText(txtDescription);
}

void XDataSourcesGen::setEds_Description(const QString& value) {
    setTrimmedText(txtDescription, value);
}

QString XDataSourcesGen::Eds_File() const {
    return trimmedText(txtFile);
}

void XDataSourcesGen::setEds_File(const QString& value) {
    setTrimmedText(txtFile, value);
}

QString XDataSourcesGen::Eds_Delimeter() const {
    const int index = cboDelimeter->currentIndex();
    return index < 0 ? QString() : Delimiters.at(index);
}

void XDataSourcesGen::setEds_Delimeter(const QString& value) {
    const int index = Delimiters.indexOf(value);
    if (index < 0)
        cboDelimeter->setPlaceholderText(value.trimmed());
    cboDelimeter->setCurrentIndex(index);
}

void XDataSourcesGen::InitializeDefaults() {
    QScopedValueRollback<bool> loading(Loading, true);
    fillDelimiters();
    fillFrequencies();
    txtDescription->clear();
    txtFile->clear();
    showTimeSeriesDefaults();
}

void XDataSourcesGen::Initialize(const QString& sDesc, const QString& sFile, const QString& sDelim,
                                 bool bIsTimeSeries, qint32 lFreq) {
    QScopedValueRollback<bool> loading(Loading, true);
    fillDelimiters();
    fillFrequencies();
    txtDescription->setText(sDesc);
    txtFile->setText(sFile);
    setEds_Delimeter(sDelim);
    showTimeSeries(bIsTimeSeries, lFreq);
    // Unlike the ODBC editor, an unchecked box keeps its frequency box disabled here.
    if (applyEditPermission())
        applyFrequencyRule();
}

bool XDataSourcesGen::IsValid(const QString& sMsgBoxTitle) {
    // The titles of this editor append a blank and the kind of error.
    if (txtFile->text().isEmpty()) {
        reportInvalid(tr("A full path must be supplied to the data file"),
                      sMsgBoxTitle + tr(" Path Error"), txtFile);
        return false;
    }
    if (mOrvane::FileNameHasBadChar(txtFile->text().trimmed())) {
        reportInvalid(tr("A file name cannot include any of the following characters: ") +
                          mOrvane::InvalidFileChars,
                      sMsgBoxTitle + tr(" File Name Error"), txtFile);
        return false;
    }
    if (cboDelimeter->currentIndex() < 0) {
        reportInvalid(tr("A delimeter type must be selected"),
                      sMsgBoxTitle + tr(" Delimeter Error"), cboDelimeter);
        return false;
    }
    if (frequencyMissing()) {
        reportInvalid(tr("A time series frequency must be selected"),
                      sMsgBoxTitle + tr(" Frequency Selection Error"), cboFrequency);
        return false;
    }
    return true;
}

void XDataSourcesGen::timeSeriesClicked(bool checked) {
    if (Loading) {
        applyFrequencyRule();
        return;
    }
    if (!checked && timeStampRemovalRefused()) {
        IgnoreNextTimeSeriesClick = true;
        ckTimeSeries->setChecked(true);
        applyFrequencyRule();
        return;
    }
    if (checked && IgnoreNextTimeSeriesClick) {
        IgnoreNextTimeSeriesClick = false;
        applyFrequencyRule();
        return;
    }
    emit dsgChange(true);
    applyFrequencyRule();
}

// Unchecking the box drops the time-stamp column; once that column is stored, reports may use
// it, so the user must confirm.
bool XDataSourcesGen::timeStampRemovalRefused() {
    if (!m_data) {
        qWarning("XDataSourcesGen: the time-series box changed before the host set Data");
        return false;
    }
    if (m_data->IsNew())
        return false;
    const auto timeStamp = m_data->Columns()->TSColumn();
    if (!timeStamp || timeStamp->Column_Id() < 1)
        return false;
    // A check that could not be made keeps the column.
    bool mayGo = false;
    mOrvane::RunReported(*this,
                         [&] { mayGo = mOrvane::TemplateUseCheck(true, timeStamp->Column_Id()); });
    return !mayGo;
}

void XDataSourcesGen::browseForFile() {
    const QString current = txtFile->text().trimmed();
    const QString directory = current.isEmpty() ? QString() : QFileInfo(current).absolutePath();
    const QString chosen = QDir::fromNativeSeparators(HostRegistry::App().GetOpenFileName(
        tr("Select Data File"), directory,
        tr("Delimited files (*.csv *.txt *.tsv *.dat);;All files (*)")));
    if (chosen.isEmpty())
        return;
    // The same rule as for typed keys: a path with a forbidden character is not taken.
    if (mOrvane::FileNameHasBadChar(chosen)) {
        HostRegistry::App().MsgBox(
            tr("A file name cannot include any of the following characters: ") +
                mOrvane::InvalidFileChars,
            MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, tr("File Name Error"));
        return;
    }
    txtFile->setText(chosen);
    emit dsgChange(false);
}

// Each caption stands above its box, as the boxes take the editor's whole width.
void XDataSourcesGen::layoutControls() {
    auto* form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(txtFile, 1);
    fileRow->addWidget(cmdBrowse);
    for (auto [label, input] : {std::pair<QLabel*, QWidget*>{lblDesc, txtDescription},
                                {lblFile, txtFile},
                                {lblDelimeter, cboDelimeter}}) {
        label->setBuddy(input);
        if (input == txtFile)
            form->addRow(label, fileRow);
        else
            form->addRow(label, input);
    }
    cboDelimeter->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    form->addRow(timeSeriesRow());

    auto* page = new QVBoxLayout(this);
    page->addLayout(form);
    page->addStretch(1);
}

} // namespace Orvane
