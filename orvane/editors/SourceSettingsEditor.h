#pragma once

#include <QWidget>

#include <functional>

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace Orvane {

// What the ASCII and the ODBC settings editors share: the time-series box with its frequency
// box, the Loading silence, the change event, the edit permission and the validation message.
// Each editor creates the shared controls itself, at the place its own order of children needs.
class SourceSettingsEditor : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool IsTimeSeries READ IsTimeSeries WRITE setIsTimeSeries NOTIFY IsTimeSeriesChanged)
    Q_PROPERTY(qint32 FreqId READ Frequency WRITE setFrequency NOTIFY FreqIdChanged)

public:
    ~SourceSettingsEditor() override;

    bool IsTimeSeries() const;
    // Not silent outside Initialize: a change of the box runs its click handling.
    void setIsTimeSeries(bool value);
    // The checked box's frequency id; 0 while the box is unchecked.
    qint32 Frequency() const;
    // Shows the frequency's name; an unknown id leaves nothing selected.
    void setFrequency(qint32 value);

    // What the layout needs, and never less than the editor's least size.
    QSize minimumSizeHint() const override;

signals:
    void dsgChange(bool isTimeSeriesChange);
    void IsTimeSeriesChanged(bool value);
    void FreqIdChanged(qint32 value);

protected:
    SourceSettingsEditor(QWidget* parent, QSize leastSize);

    QCheckBox* ckTimeSeries = nullptr;
    QLabel* lblFreq = nullptr;
    QComboBox* cboFrequency = nullptr;

    void createTimeSeriesBox(QWidget* parent);
    void createFrequencyLabel(QWidget* parent);
    void createFrequencyBox(QWidget* parent, const QString& toolTip);
    // The time-series box, then the frequency with its label, on one line.
    QHBoxLayout* timeSeriesRow();
    QLabel* createLabel(const QString& name, const QString& caption, QWidget* parent);
    QLineEdit* createTextBox(const QString& name, const QString& toolTip, QWidget* parent);

    // Filling the controls raises the same control events as an edit; Loading silences them.
    bool Loading = false;
    void raiseChange(bool isTimeSeriesChange);

    // Lists the shared frequencies once more, without duplicating an earlier fill.
    void fillFrequencies();
    void showTimeSeriesDefaults();
    void showTimeSeries(bool bIsTimeSeries, qint32 lFreq);
    void applyFrequencyRule();
    // Enables the inputs as the host's edit permission says, and returns the permission.
    bool applyEditPermission();

    bool frequencyMissing() const;
    // The message of a failed check, then the focus on the control to correct.
    void reportInvalid(const QString& message, const QString& title, QWidget* focus);

    // Calls notify with the box's trimmed text each time that text changes, typed or set.
    void notifyTrimmedChanges(QLineEdit* textBox, std::function<void(const QString&)> notify);

    static QString trimmedText(const QLineEdit* textBox);
    static void setTrimmedText(QLineEdit* textBox, const QString& value);

    // The box's click, whether from the user or from a program that changed its state.
    virtual void timeSeriesClicked(bool checked) = 0;

private:
    void notifyFrequencyChange();

    QSize m_leastSize;
    qint32 m_notifiedFreqId = 0;
};

} // namespace Orvane
