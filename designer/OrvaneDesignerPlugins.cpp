#include "designer/OrvaneDesignerPlugins.h"

#include "designer/OrvaneWidgetPlugin.h"
#include "orvane/columns/XDataSourcesColumn.h"
#include "orvane/editors/XDataSourcesGen.h"
#include "orvane/editors/XDataSourcesODBC.h"

namespace Orvane::Designer {

namespace {

template <typename Control> QWidget* create(QWidget* parent) {
    return new Control(parent);
}

} // namespace

OrvaneDesignerPlugins::OrvaneDesignerPlugins(QObject* parent)
    : QObject(parent) {
    m_widgets = {
        new OrvaneWidgetPlugin(
            QStringLiteral("XDataSourcesGen"), QStringLiteral("orvane/editors/XDataSourcesGen.h"),
            tr("The settings of an ASCII data source"), create<XDataSourcesGen>, this),
        new OrvaneWidgetPlugin(
            QStringLiteral("XDataSourcesODBC"), QStringLiteral("orvane/editors/XDataSourcesODBC.h"),
            tr("The settings of an ODBC data source"), create<XDataSourcesODBC>, this),
        new OrvaneWidgetPlugin(QStringLiteral("XDataSourcesColumn"),
                               QStringLiteral("orvane/columns/XDataSourcesColumn.h"),
                               tr("The column layout of a data source"), create<XDataSourcesColumn>,
                               this),
    };
}

QList<QDesignerCustomWidgetInterface*> OrvaneDesignerPlugins::customWidgets() const {
    return m_widgets;
}

} // namespace Orvane::Designer
