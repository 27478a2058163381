#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

namespace Orvane::Designer {

// One of the library's controls as Designer offers it: its class, the header a .ui file's
// generated code includes, and how to create it.
class OrvaneWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    using Factory = std::function<QWidget*(QWidget* parent)>;

    OrvaneWidgetPlugin(const QString& className, const QString& header, const QString& toolTip,
                       Factory create, QObject* parent);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    QString m_className;
    QString m_header;
    QString m_toolTip;
    Factory m_create;
    bool m_initialized = false;
};

} // namespace Orvane::Designer
