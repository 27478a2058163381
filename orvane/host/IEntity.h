#pragma once

#include <QString>

namespace Orvane {

// A dictionary entity (the kind of network object a source's rows describe).
class IEntity {
public:
    virtual ~IEntity() = default;

    virtual qint32 Entity_Id() const = 0;
    virtual QString Entity_Name() const = 0;
    virtual QString Entity_Label() const = 0;
    // Re-reads the entity's fields, so that fields created by a save are known to it.
    virtual void Reload() = 0;
};

} // namespace Orvane
