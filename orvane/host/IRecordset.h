#pragma once

#include <QString>
#include <QVariant>

namespace Orvane {

// A forward-readable result of a SELECT, as the host's query service returns it.
class IRecordset {
public:
    virtual ~IRecordset() = default;

    // Named Eof rather than EOF: EOF is a macro of the C library.
    virtual bool Eof() const = 0;
    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    // The value of the named field of the current row, the name compared without regard to case.
    // A database null is a null QVariant; an unknown field name throws Orvane::Error.
    virtual QVariant Value(const QString& field) const = 0;
};

} // namespace Orvane
