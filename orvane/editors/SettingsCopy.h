#pragma once

namespace Orvane {

class CDataSourcesData;
class SourceSettingsEditor;

namespace mOrvane {

// Copies every setting property of a settings editor (ASCII or ODBC) into the document, under
// the document's own names; what the host does once IsValid has passed.
void CopySettingsIntoDocument(const SourceSettingsEditor& editor, CDataSourcesData& document);

} // namespace mOrvane
} // namespace Orvane
