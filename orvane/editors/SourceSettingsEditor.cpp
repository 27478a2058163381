#include "orvane/editors/SourceSettingsEditor.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/FrequencyList.h"
#include "orvane/widgets/ControlState.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace Orvane {

SourceSettingsEditor::SourceSettingsEditor(QWidget* parent, QSize leastSize)
    : QWidget(parent)
    , m_leastSize(leastSize) {}

SourceSettingsEditor::~SourceSettingsEditor() = default;

void SourceSettingsEditor::createTimeSeriesBox(QWidget* parent) {
    ckTimeSeries = new QCheckBox(tr("Data IsTime Series"), parent);
    ckTimeSeries->setObjectName(QStringLiteral("ckTimeSeries"));
    ckTimeSeries->setToolTip(tr("Check if data is time series"));
    connect(ckTimeSeries, &QCheckBox::toggled, this, &SourceSettingsEditor::timeSeriesClicked);
    connect(ckTimeSeries, &QCheckBox::toggled, this, &SourceSettingsEditor::IsTimeSeriesChanged);
    connect(ckTimeSeries, &QCheckBox::toggled, this, &SourceSettingsEditor::notifyFrequencyChange);
}

void SourceSettingsEditor::createFrequencyLabel(QWidget* parent) {
    lblFreq = createLabel(QStringLiteral("lblFreq"), tr("Frequency:"), parent);
}

void SourceSettingsEditor::createFrequencyBox(QWidget* parent, const QString& toolTip) {
    cboFrequency = new QComboBox(parent);
    cboFrequency->setObjectName(QStringLiteral("cboFrequency"));
    cboFrequency->setToolTip(toolTip);
    // Wide enough for a frequency's name even while none is selected.
    cboFrequency->setMinimumContentsLength(12);
    connect(cboFrequency, &QComboBox::currentIndexChanged, this, [this] { raiseChange(false); });
    connect(cboFrequency, &QComboBox::currentIndexChanged, this,
            &SourceSettingsEditor::notifyFrequencyChange);
}

// FreqId follows both the box and the list, so it is compared before it is announced.
void SourceSettingsEditor::notifyFrequencyChange() {
    const qint32 freqId = Frequency();
    if (freqId == m_notifiedFreqId)
        return;
    m_notifiedFreqId = freqId;
    emit FreqIdChanged(freqId);
}

void SourceSettingsEditor::notifyTrimmedChanges(QLineEdit* textBox,
                                                std::function<void(const QString&)> notify) {
    connect(textBox, &QLineEdit::textChanged, this,
            [textBox, notify = std::move(notify), last = trimmedText(textBox)]() mutable {
                const QString value = trimmedText(textBox);
                if (value == last)
                    return;
                last = value;
                notify(value);
            });
}

QHBoxLayout* SourceSettingsEditor::timeSeriesRow() {
    lblFreq->setBuddy(cboFrequency);
    auto* row = new QHBoxLayout;
    row->addWidget(ckTimeSeries);
    row->addSpacing(ckTimeSeries->sizeHint().height());
    row->addWidget(lblFreq);
    row->addWidget(cboFrequency);
    row->addStretch(1);
    return row;
}

QSize SourceSettingsEditor::minimumSizeHint() const {
    return QWidget::minimumSizeHint().expandedTo(m_leastSize);
}

QLabel* SourceSettingsEditor::createLabel(const QString& name, const QString& caption,
                                          QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

QLineEdit* SourceSettingsEditor::createTextBox(const QString& name, const QString& toolTip,
                                               QWidget* parent) {
    auto* textBox = new QLineEdit(parent);
    textBox->setObjectName(name);
    textBox->setToolTip(toolTip);
    return textBox;
}

void SourceSettingsEditor::raiseChange(bool isTimeSeriesChange) {
    if (!Loading)
        emit dsgChange(isTimeSeriesChange);
}

bool SourceSettingsEditor::IsTimeSeries() const {
    return ckTimeSeries->isChecked();
}

void SourceSettingsEditor::setIsTimeSeries(bool value) {
    ckTimeSeries->setChecked(value);
    applyFrequencyRule();
}

qint32 SourceSettingsEditor::Frequency() const {
    if (!ckTimeSeries->isChecked())
        return 0;
    return FrequencyList::IdOf(cboFrequency->currentText());
}

void SourceSettingsEditor::setFrequency(qint32 value) {
    cboFrequency->setCurrentIndex(cboFrequency->findText(FrequencyList::DescriptionOf(value)));
}

void SourceSettingsEditor::fillFrequencies() {
    cboFrequency->clear();
    for (const FrequencyItem& item : FrequencyList::Items())
        cboFrequency->addItem(item.Description);
}

void SourceSettingsEditor::showTimeSeriesDefaults() {
    ckTimeSeries->setChecked(true);
    cboFrequency->setEnabled(true);
    cboFrequency->setCurrentIndex(cboFrequency->count() > 0 ? 0 : -1);
}

void SourceSettingsEditor::showTimeSeries(bool bIsTimeSeries, qint32 lFreq) {
    ckTimeSeries->setChecked(bIsTimeSeries);
    cboFrequency->setEnabled(bIsTimeSeries);
    if (bIsTimeSeries)
        setFrequency(lFreq);
    else
        cboFrequency->setCurrentIndex(-1);
}

void SourceSettingsEditor::applyFrequencyRule() {
    cboFrequency->setEnabled(ckTimeSeries->isChecked());
}

bool SourceSettingsEditor::applyEditPermission() {
    const bool permission = HostRegistry::App().EditPermission();
    mOrvane::SetControlsEnabled(this, permission);
    return permission;
}

bool SourceSettingsEditor::frequencyMissing() const {
    return ckTimeSeries->isChecked() && cboFrequency->currentIndex() < 0;
}

void SourceSettingsEditor::reportInvalid(const QString& message, const QString& title,
                                         QWidget* focus) {
    HostRegistry::App().MsgBox(message, MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, title);
    focus->setFocus();
}

QString SourceSettingsEditor::trimmedText(const QLineEdit* textBox) {
    return textBox->text().trimmed();
}

void SourceSettingsEditor::setTrimmedText(QLineEdit* textBox, const QString& value) {
    textBox->setText(value.trimmed());
}

} // namespace Orvane
