#pragma once

#include <QString>

class QCheckBox;
class QComboBox;
class QWidget;

// The small user-interface routines that every editor and dialog of the library shares.
namespace Orvane::mOrvane {

// The nine characters a file name may not contain, in this order.
inline const QString InvalidFileChars = QStringLiteral("\\*?\"'<>|;");
// The column and field types; splitting at tabs yields a sixth, empty entry.
inline const QString DataTypeList = QStringLiteral("Integer\tFloat\tString\tENUM\tDate\t");

constexpr int EnterKey = 13;

// Enables or disables an owner's controls: labels and frames stay enabled, separators are left
// alone, containers are walked into, and every other control (with its menu actions) takes the
// flag.
void SetControlsEnabled(QWidget* owner, bool enabled);

bool FileNameHasBadChar(const QString& text);
bool IsValidFileName(const QString& text);
// 0 (the keystroke is discarded) for a forbidden character or Enter; else the code unchanged.
int FilterFileNameKey(int keyAscii);

QString DataTypeNameFromCode(const QString& code);
QString DataTypeCode(const QString& typeName);

// Appends the shared frequency list's descriptions to the box, in the list's order.
void FillFrequencyList(QComboBox& cboFrequency);
// The frequency box is enabled exactly when the time-series box is checked.
void ApplyFrequencyRule(const QCheckBox& ckTimeSeries, QComboBox& cboFrequency);

// Sizes of the original layout are written in twips; 15 twips make a pixel.
constexpr int TwipsToPixels(int twips) {
    return twips / 15;
}

} // namespace Orvane::mOrvane
