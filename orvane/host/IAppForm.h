#pragma once

#include <QString>

namespace Orvane {

// A form that announces itself to the host application while it is loaded.
class IAppForm {
public:
    virtual ~IAppForm() = default;

    virtual void* IAppForm_Document() const = 0;
    virtual QString IAppForm_HelpContextName() const = 0;
    virtual bool IAppForm_IsLoadOk() const = 0;
    virtual qint32 IAppForm_Kind() const = 0;
    virtual QString IAppForm_Name() const = 0;
    virtual void IAppForm_SaveState() = 0;
};

} // namespace Orvane
