#pragma once

#include "orvane/host/XTechnologies.h"
#include "studio/dictionary/FieldValues.h"

#include <QList>

class QCheckBox;
class QGridLayout;

namespace Orvane::Studio {

class DictionaryService;

// The studio's technologies checklist: one check box per technology of the dictionary, in bit
// order, named chkTechnology(0), chkTechnology(1), ...
//
// - The text form (Technologies, setTechnologies) is the checked names in bit order joined by
//   ", " ("GSM, LTE"), as the dictionary stores a field's technologies. setTechnologies reads
//   names separated by commas, regardless of case and blanks; names the dictionary does not have
//   are left out.
// - TechnologyMask is the sum of the checked technologies' bits.
// - Changed() is raised on every toggle by the user, never for a value set by the program.
// - Initialize() reads the technologies again and keeps what was checked.
// The dictionary service must outlive the checklist.
class TechnologiesChecklist : public XTechnologies {
    Q_OBJECT

public:
    explicit TechnologiesChecklist(DictionaryService& dictionary, QWidget* parent = nullptr);

    void Initialize() override;
    QString Technologies() const override;
    void setTechnologies(const QString& technologies) override;
    qint32 TechnologyMask() const override;
    void setTechnologyMask(qint32 mask);

    QList<QCheckBox*> chkTechnology;

private:
    void rebuild(qint32 mask);

    DictionaryService& m_dictionary;
    QList<Technology> m_technologies;
    QGridLayout* m_layout = nullptr;
};

} // namespace Orvane::Studio
