#include "studio/dictionary/FieldStyleDialog.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>

namespace Orvane::Studio {

namespace {

constexpr qint32 BoldBit = 1;
constexpr qint32 ItalicBit = 2;
constexpr qint32 UnderlineBit = 4;
constexpr qint32 FontBits = BoldBit | ItalicBit | UnderlineBit;

struct NamedColour {
    const char* name;
    QRgb rgb;
};

constexpr NamedColour StandardColours[] = {
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Black"), 0x000000},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Maroon"), 0x800000},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Green"), 0x008000},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Olive"), 0x808000},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Navy"), 0x000080},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Purple"), 0x800080},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Teal"), 0x008080},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Grey"), 0x808080},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Silver"), 0xC0C0C0},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Red"), 0xFF0000},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Lime"), 0x00FF00},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Yellow"), 0xFFFF00},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Blue"), 0x0000FF},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Fuchsia"), 0xFF00FF},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "Aqua"), 0x00FFFF},
    {QT_TRANSLATE_NOOP("Orvane::Studio::FieldStyleDialog", "White"), 0xFFFFFF},
};

QColor colourOf(qint32 value) {
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}

qint32 valueOf(const QColor& colour) {
    return colour.red() | (colour.green() << 8) | (colour.blue() << 16);
}

QIcon swatch(const QColor& colour) {
    QPixmap pixmap(16, 16);
    pixmap.fill(colour);
    return QIcon(pixmap);
}

QCheckBox* checkBox(const QString& caption, const char* name, QWidget* parent) {
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(QLatin1String(name));
    return box;
}

} // namespace

FieldStyleDialog::FieldStyleDialog(QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("FieldStyleDialog"));
    setWindowTitle(tr("Field Style"));
    createControls();
    layoutControls();
    refreshSample();
}

void FieldStyleDialog::createControls() {
    chkBold = checkBox(tr("&Bold"), "chkBold", this);
    chkItalic = checkBox(tr("&Italic"), "chkItalic", this);
    chkUnderline = checkBox(tr("&Underline"), "chkUnderline", this);
    cboColour = new QComboBox(this);
    cboColour->setObjectName(QStringLiteral("cboColour"));
    for (const NamedColour& colour : StandardColours)
        cboColour->addItem(swatch(QColor(colour.rgb)), tr(colour.name),
                           valueOf(QColor(colour.rgb)));
    cmdColour = new QPushButton(QStringLiteral("..."), this);
    cmdColour->setObjectName(QStringLiteral("cmdColour"));
    cmdColour->setToolTip(tr("Other Colour"));
    cmdColour->setAutoDefault(false);
    lblSample = new QLabel(tr("Sample"), this);
    lblSample->setObjectName(QStringLiteral("lblSample"));
    lblSample->setAlignment(Qt::AlignCenter);
    lblSample->setFrameShape(QFrame::StyledPanel);
    cmdOk = new QPushButton(tr("&OK"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);

    for (QCheckBox* box : {chkBold, chkItalic, chkUnderline})
        connect(box, &QCheckBox::toggled, this, &FieldStyleDialog::refreshSample);
    connect(cboColour, &QComboBox::currentIndexChanged, this, &FieldStyleDialog::refreshSample);
    connect(cmdColour, &QPushButton::clicked, this, &FieldStyleDialog::pickColour);
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void FieldStyleDialog::layoutControls() {
    auto* fontRow = new QHBoxLayout;
    fontRow->addWidget(chkBold);
    fontRow->addWidget(chkItalic);
    fontRow->addWidget(chkUnderline);
    auto* colourRow = new QHBoxLayout;
    colourRow->addWidget(cboColour, 1);
    colourRow->addWidget(cmdColour);
    auto* form = new QFormLayout;
    form->addRow(tr("Font:"), fontRow);
    auto* colourLabel = new QLabel(tr("C&olour:"), this);
    colourLabel->setBuddy(cboColour);
    form->addRow(colourLabel, colourRow);
    form->addRow(lblSample);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    auto* page = new QVBoxLayout(this);
    page->addLayout(form);
    page->addLayout(buttons);
}

qint32 FieldStyleDialog::Style() const {
    qint32 style = m_otherBits;
    if (chkBold->isChecked())
        style |= BoldBit;
    if (chkItalic->isChecked())
        style |= ItalicBit;
    if (chkUnderline->isChecked())
        style |= UnderlineBit;
    return style;
}

void FieldStyleDialog::setStyle(qint32 style) {
    m_otherBits = style & ~FontBits;
    chkBold->setChecked(style & BoldBit);
    chkItalic->setChecked(style & ItalicBit);
    chkUnderline->setChecked(style & UnderlineBit);
}

qint32 FieldStyleDialog::StyleColour() const {
    return cboColour->currentData().toInt();
}

void FieldStyleDialog::setStyleColour(qint32 colour) {
    selectColour(colour);
}

// A colour that is none of the standard ones gets an entry of its own.
void FieldStyleDialog::selectColour(qint32 colour) {
    int index = cboColour->findData(colour);
    if (index < 0) {
        const QColor shown = colourOf(colour);
        cboColour->addItem(swatch(shown), shown.name(), colour);
        index = cboColour->count() - 1;
    }
    cboColour->setCurrentIndex(index);
}

void FieldStyleDialog::pickColour() {
    QColorDialog picker(colourOf(StyleColour()), this);
    picker.setObjectName(QStringLiteral("dlgColour"));
    if (HostRegistry::App().ShowModal(picker) == QDialog::Accepted)
        selectColour(valueOf(picker.currentColor()));
}

void FieldStyleDialog::refreshSample() {
    QFont font = lblSample->font();
    font.setBold(chkBold->isChecked());
    font.setItalic(chkItalic->isChecked());
    font.setUnderline(chkUnderline->isChecked());
    lblSample->setFont(font);
    QPalette palette = lblSample->palette();
    palette.setColor(QPalette::WindowText, colourOf(StyleColour()));
    lblSample->setPalette(palette);
}

} // namespace Orvane::Studio
