#pragma once

#include <QString>

namespace Orvane::mOrvane {

// A dictionary field name begins with an ASCII letter or an underscore and goes on with ASCII
// letters, digits, % or underscores. Its length is the dictionary's to limit.
bool FollowsFieldNameRule(const QString& name);

} // namespace Orvane::mOrvane
