#include "orvane/exchange/DefinitionJson.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using Orvane::DefinitionJson;

// Any bytes are either a definition or a list of problems, never both and never neither. A
// definition read is written canonically, and the canonical form reads back to itself.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto read = DefinitionJson::Read(text);
    if (read.definition.has_value() == !read.problems.isEmpty())
        std::abort();
    if (!read.definition)
        return 0;
    const QByteArray canonical = DefinitionJson::Write(*read.definition);
    const auto again = DefinitionJson::Read(canonical);
    if (!again.definition || DefinitionJson::Write(*again.definition) != canonical)
        std::abort();
    return 0;
}
