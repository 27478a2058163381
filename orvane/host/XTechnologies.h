#pragma once

#include <QString>
#include <QWidget>

namespace Orvane {

// The host's technologies checklist, embedded by the field editor.
class XTechnologies : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    virtual void Initialize() = 0;
    // The selection in its text form, as a field object stores it.
    virtual QString Technologies() const = 0;
    virtual void setTechnologies(const QString& technologies) = 0;
    // The selection as a bit mask; 0 when nothing is checked.
    virtual qint32 TechnologyMask() const = 0;

signals:
    void Changed();
};

} // namespace Orvane
