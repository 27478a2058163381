#include "orvane/editors/SettingsCopy.h"

#include "orvane/editors/SourceSettingsEditor.h"
#include "orvane/model/CDataSourcesData.h"

#include <QMetaProperty>

#include <functional>
#include <unordered_map>

namespace Orvane::mOrvane {

namespace {

using Setter = std::function<void(CDataSourcesData&, const QVariant&)>;

template <typename T> Setter setter(void (CDataSourcesData::*set)(T)) {
    return [set](CDataSourcesData& document, const QVariant& value) {
        (document.*set)(value.value<std::remove_cvref_t<T>>());
    };
}

// The editors' property names beside the document's setters; an editor property missing here
// is not a setting of the document.
const std::unordered_map<std::string, Setter>& documentSetters() {
    static const std::unordered_map<std::string, Setter> setters = {
        {"IsTimeSeries", setter(&CDataSourcesData::setIsTimeSeries)},
        {"FreqId", setter(&CDataSourcesData::setFreqId)},
        {"Description", setter(&CDataSourcesData::setDocDescription)},
        {"Eds_File", setter(&CDataSourcesData::setFileName)},
        {"Eds_Delimeter", setter(&CDataSourcesData::setDelimeter)},
        {"Server", setter(&CDataSourcesData::setServer)},
        {"Database", setter(&CDataSourcesData::setSchema)},
        {"Table", setter(&CDataSourcesData::setTable)},
        {"UserId", setter(&CDataSourcesData::setUserId)},
        {"Password", setter(&CDataSourcesData::setPassword)},
    };
    return setters;
}

} // namespace

void CopySettingsIntoDocument(const SourceSettingsEditor& editor, CDataSourcesData& document) {
    const QMetaObject* meta = editor.metaObject();
    const auto& setters = documentSetters();
    for (int i = SourceSettingsEditor::staticMetaObject.propertyOffset(); i < meta->propertyCount();
         ++i) {
        const QMetaProperty property = meta->property(i);
        const auto found = setters.find(property.name());
        if (found != setters.end())
            found->second(document, property.read(&editor));
    }
}

} // namespace Orvane::mOrvane
