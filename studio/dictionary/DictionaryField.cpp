#include "studio/dictionary/DictionaryField.h"

#include "orvane/host/OrvaneError.h"
#include "studio/dictionary/FieldStore.h"

#include <QCoreApplication>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::DictionaryField)
};

constexpr qint32 NameTakenCode = 2;
constexpr qint32 RefusedCode = 1;

} // namespace

DictionaryField::DictionaryField(IQueryService& query, FieldValues values)
    : m_query(&query)
    , m_values(std::move(values)) {}

QString DictionaryField::ExtraColumnValue(const QString& column) const {
    return m_values.extra.value(column);
}

bool DictionaryField::Save(const FieldSaveRequest& request, QVariant& result) {
    m_error = {};
    FieldStore store(*m_query);
    try {
        FieldValues values = store.Prepare(request, m_values);
        if (store.NameTaken(values.entityId, values.name, values.id)) {
            m_error = {NameTakenCode, true,
                       Texts::tr("The entity already has a field named %1.").arg(values.name)};
            return false;
        }
        if (values.id > 0)
            store.WriteStored(values);
        m_values = std::move(values);
    } catch (const Error& error) {
        m_error = {RefusedCode, false, error.message()};
        return false;
    }
    result = m_values.id;
    return true;
}

} // namespace Orvane::Studio
