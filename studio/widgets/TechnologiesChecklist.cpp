#include "studio/widgets/TechnologiesChecklist.h"

#include "studio/dictionary/DictionaryService.h"
#include "studio/dictionary/FieldStore.h"

#include <QCheckBox>
#include <QGridLayout>

namespace Orvane::Studio {

namespace {

constexpr int BoxesPerRow = 4;

} // namespace

TechnologiesChecklist::TechnologiesChecklist(DictionaryService& dictionary, QWidget* parent)
    : XTechnologies(parent)
    , m_dictionary(dictionary) {
    m_layout = new QGridLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    Initialize();
}

void TechnologiesChecklist::Initialize() {
    const qint32 mask = TechnologyMask();
    m_technologies = m_dictionary.Technologies();
    rebuild(mask);
}

void TechnologiesChecklist::rebuild(qint32 mask) {
    qDeleteAll(chkTechnology);
    chkTechnology.clear();
    for (int i = 0; i < m_technologies.size(); ++i) {
        const Technology& technology = m_technologies.at(i);
        auto* box = new QCheckBox(technology.name, this);
        box->setObjectName(QStringLiteral("chkTechnology(%1)").arg(i));
        box->setChecked((mask & technology.bit) != 0);
        connect(box, &QCheckBox::clicked, this, &XTechnologies::Changed);
        m_layout->addWidget(box, i / BoxesPerRow, i % BoxesPerRow);
        chkTechnology << box;
    }
    setFocusProxy(chkTechnology.value(0));
}

QString TechnologiesChecklist::Technologies() const {
    return FieldStore::TechnologyText(m_technologies, TechnologyMask());
}

void TechnologiesChecklist::setTechnologies(const QString& technologies) {
    qint32 mask = 0;
    for (const QString& name : technologies.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        for (const Technology& technology : m_technologies) {
            if (technology.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
                mask |= technology.bit;
        }
    }
    setTechnologyMask(mask);
}

qint32 TechnologiesChecklist::TechnologyMask() const {
    qint32 mask = 0;
    for (int i = 0; i < chkTechnology.size(); ++i) {
        if (chkTechnology.at(i)->isChecked())
            mask |= m_technologies.at(i).bit;
    }
    return mask;
}

void TechnologiesChecklist::setTechnologyMask(qint32 mask) {
    for (int i = 0; i < chkTechnology.size(); ++i)
        chkTechnology.at(i)->setChecked((mask & m_technologies.at(i).bit) != 0);
}

} // namespace Orvane::Studio
