#pragma once

#include <QObject>
#include <QWidget>

#include <stdexcept>

namespace Orvane::Testing {

// A control reached by its object name; a missing one fails the test with the name.
template <typename T = QWidget> T* child(const QObject& parent, const QString& name) {
    if (T* found = parent.findChild<T*>(name))
        return found;
    throw std::runtime_error("no control " + name.toStdString());
}

} // namespace Orvane::Testing
