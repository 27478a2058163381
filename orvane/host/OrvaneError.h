#pragma once

#include <QString>
#include <exception>
#include <string>

namespace Orvane {

// The one error type that crosses the library: database failures raised by the host's query
// service and conversion failures of the model. The library never swallows it; it reaches the host.
class Error : public std::exception {
public:
    explicit Error(QString message)
        : m_message(std::move(message))
        , m_what(m_message.toStdString()) {}
    const QString& message() const noexcept { return m_message; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    QString m_message;
    std::string m_what;
};

} // namespace Orvane
