#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace Orvane::Studio {

// The studio's style chooser for a dictionary field: bold, italic and underline (style bits 1,
// 2 and 4; other bits are kept as they are) and a text colour, held as the host stores colours
// (red in the low byte, then green, then blue). The colour is picked from the standard colours
// in cboColour or, through cmdColour, from a colour dialog shown by the host application.
class FieldStyleDialog : public QDialog {
    Q_OBJECT

public:
    explicit FieldStyleDialog(QWidget* parent = nullptr);

    qint32 Style() const;
    void setStyle(qint32 style);
    qint32 StyleColour() const;
    void setStyleColour(qint32 colour);

    QCheckBox* chkBold = nullptr;
    QCheckBox* chkItalic = nullptr;
    QCheckBox* chkUnderline = nullptr;
    QComboBox* cboColour = nullptr;
    QPushButton* cmdColour = nullptr;
    QLabel* lblSample = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;

private:
    void createControls();
    void layoutControls();
    void pickColour();
    void selectColour(qint32 colour);
    void refreshSample();

    qint32 m_otherBits = 0;
};

} // namespace Orvane::Studio
