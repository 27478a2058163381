#include "designer/OrvaneWidgetPlugin.h"

#include <QIcon>

namespace Orvane::Designer {

OrvaneWidgetPlugin::OrvaneWidgetPlugin(const QString& className, const QString& header,
                                       const QString& toolTip, Factory create, QObject* parent)
    : QObject(parent)
    , m_className(className)
    , m_header(header)
    , m_toolTip(toolTip)
    , m_create(std::move(create)) {}

QString OrvaneWidgetPlugin::name() const {
    return QStringLiteral("Orvane::") + m_className;
}

QString OrvaneWidgetPlugin::group() const {
    return QStringLiteral("Orvane");
}

QString OrvaneWidgetPlugin::toolTip() const {
    return m_toolTip;
}

QString OrvaneWidgetPlugin::whatsThis() const {
    return m_toolTip;
}

QString OrvaneWidgetPlugin::includeFile() const {
    return m_header;
}

QIcon OrvaneWidgetPlugin::icon() const {
    return QIcon();
}

bool OrvaneWidgetPlugin::isContainer() const {
    return false;
}

QWidget* OrvaneWidgetPlugin::createWidget(QWidget* parent) {
    return m_create(parent);
}

bool OrvaneWidgetPlugin::isInitialized() const {
    return m_initialized;
}

void OrvaneWidgetPlugin::initialize(QDesignerFormEditorInterface*) {
    m_initialized = true;
}

// The object name a new instance gets in a form: the class name with a small first letter.
QString OrvaneWidgetPlugin::domXml() const {
    const QString objectName = m_className.left(1).toLower() + m_className.mid(1);
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\"/></ui>")
        .arg(name(), objectName);
}

} // namespace Orvane::Designer
