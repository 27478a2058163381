#include "tests/support/FakeWidgets.h"

namespace Orvane::Testing {

void FakeTemplateTree::LoadTree(const QString& schema, const QString& category) {
    loads << schema + QLatin1Char('|') + category;
}

void FakeTechnologies::check(qint32 newMask) {
    mask = newMask;
    emit Changed();
}

XTemplate* FakeWidgetFactory::CreateTemplateTree(QWidget* parent) {
    lastTree = new FakeTemplateTree(parent);
    return lastTree;
}

XTechnologies* FakeWidgetFactory::CreateTechnologies(QWidget* parent) {
    lastTechnologies = new FakeTechnologies(parent);
    return lastTechnologies;
}

} // namespace Orvane::Testing
