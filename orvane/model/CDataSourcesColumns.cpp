#include "orvane/model/CDataSourcesColumns.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IField.h"
#include "orvane/host/IFieldInfoService.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumnsState.h"
#include "orvane/model/MSQL.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

namespace Orvane {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::CDataSourcesColumns)
};

constexpr qint32 MaxPosition = 500;

} // namespace

CDataSourcesColumns::CDataSourcesColumns() = default;

CDataSourcesColumns::~CDataSourcesColumns() {
    Clear();
}

QString CDataSourcesColumns::keyOf(const QString& name) {
    return name.trimmed().toCaseFolded();
}

CDataSourcesColumns::ColumnPtr CDataSourcesColumns::TSColumn() const {
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [](const ColumnPtr& c) { return c->IsTimeStamp(); });
    return found == m_items.end() ? nullptr : *found;
}

qint32 CDataSourcesColumns::FirstFreePosition() const {
    for (qint32 position = 1; position <= MaxPosition; ++position) {
        if (!PositionInUse(position, QString()))
            return position;
    }
    return MaxPosition + 1;
}

bool CDataSourcesColumns::PositionInUse(qint32 ord, const QString& dsName) const {
    return std::any_of(m_items.begin(), m_items.end(), [&](const ColumnPtr& c) {
        return c->Position() == ord && c->Column_Name() != dsName;
    });
}

bool CDataSourcesColumns::OrdInUse(qint32 ord) const {
    return std::any_of(m_items.begin(), m_items.end(), [&](const ColumnPtr& c) {
        return !c->ColumnDeleted() && c->Key_Ordinal() == ord;
    });
}

qint32 CDataSourcesColumns::ActiveColumns() const {
    return static_cast<qint32>(std::count_if(
        m_items.begin(), m_items.end(), [](const ColumnPtr& c) { return !c->ColumnDeleted(); }));
}

qint32 CDataSourcesColumns::BiggestOrdinal() const {
    qint32 biggest = 0;
    for (const auto& column : m_items)
        biggest = std::max(biggest, column->Key_Ordinal());
    return biggest;
}

bool CDataSourcesColumns::KeyExists(qint32 lKey) const {
    if (lKey <= 0)
        return false;
    return std::any_of(m_items.begin(), m_items.end(),
                       [&](const ColumnPtr& c) { return c->Is_Key() && c->Key_Ordinal() == lKey; });
}

bool CDataSourcesColumns::FieldNameUsedElsewhere(const CDataSourcesColumn& self,
                                                 const QString& name) const {
    return std::any_of(m_items.begin(), m_items.end(), [&](const ColumnPtr& other) {
        return other.get() != &self && other->Field() &&
               other->Field_Name().compare(name, Qt::CaseInsensitive) == 0;
    });
}

void CDataSourcesColumns::LoadColumns(qint32 EDS_Id) {
    if (EDS_Id <= 0)
        return;
    IQueryService& query = HostRegistry::Query();
    const auto rst = query.OpenRecordset(MSQL::ColumnQuery(EDS_Id), 60);
    if (!rst)
        return;

    // All mapped fields are resolved with one lookup of the dictionary.
    QStringList ids;
    for (; !rst->Eof(); rst->MoveNext())
        ids << QString::number(query.ValueAsLong(rst->Value(QStringLiteral("Field_Id"))));
    const auto fields = HostRegistry::FieldInfo().FieldsByIds(ids.join(QLatin1Char(',')));
    if (!ids.isEmpty())
        rst->MoveFirst();

    const bool editorPosition = MSQL::HasEditorPosition();
    // Literal names: nothing is converted for each of the many reads.
    const auto text = [&](const QString& name) { return rst->Value(name).toString(); };
    const auto integer = [&](const QString& name) { return query.ValueAsLong(rst->Value(name)); };
    for (; !rst->Eof(); rst->MoveNext()) {
        const ColumnPtr column = Add(text(QStringLiteral("col_name")));
        column->setColumn_Id(integer(QStringLiteral("col_id")));
        column->setColumn_Type(text(QStringLiteral("col_type")));
        column->setPosition(integer(QStringLiteral("col_position")));
        column->setField(fields.value(QString::number(integer(QStringLiteral("Field_Id")))));
        column->setPK_Id(integer(QStringLiteral("PK_Id")));
        column->setKeyFld_Id(integer(QStringLiteral("pkfld_id")));
        column->setKey_Ordinal(integer(QStringLiteral("Ordinal")));
        column->setKeyEntity_Id(integer(QStringLiteral("pkentity_id")));
        column->setKeyFld_Name(text(QStringLiteral("pkfld_name")));
        column->setKeyEntity(text(QStringLiteral("pkentity_name")));
        column->setKeyEntity_Label(text(QStringLiteral("pkentity_label")));
        column->setIsTimeStamp(query.ValueAsBoolean(rst->Value(QStringLiteral("TimeStamp"))));
        if (editorPosition)
            column->setColPosition(integer(QStringLiteral("editor_position")));
    }
    m_edsId = EDS_Id;
}

CDataSourcesColumns::ColumnPtr CDataSourcesColumns::Add(const QString& name) {
    const QString trimmed = name.trimmed();
    // Folded once: a load adds thousands of columns.
    const QString key = trimmed.toCaseFolded();
    ColumnPtr column = m_byKey.value(key);
    if (!column && name == QLatin1String("Time Stamp"))
        column = TSColumn();
    if (!column) {
        column = std::make_shared<CDataSourcesColumn>();
        column->setColumn_Name(trimmed);
        append(key, column);
    }
    return column;
}

bool CDataSourcesColumns::AddItem(const CDataSourcesColumn& dsc) {
    const ColumnPtr stored = Item(dsc.Column_Name());
    if (!stored) {
        ColumnPtr copy = dsc.Clone();
        const QString key = copy->Column_Name();
        append(keyOf(key), std::move(copy));
        return true;
    }
    stored->setColumn_Id(dsc.Column_Id());
    stored->setColumn_Type(dsc.Column_Type());
    stored->setPosition(dsc.Position());
    stored->setField(dsc.Field());
    stored->setPK_Id(dsc.PK_Id());
    stored->setKeyFld_Id(dsc.KeyFld_Id());
    stored->setKey_Ordinal(dsc.Key_Ordinal());
    stored->setKeyEntity_Id(dsc.KeyEntity_Id());
    stored->setKeyFld_Name(dsc.KeyFld_Name());
    stored->setKeyEntity(dsc.KeyEntity());
    stored->setKeyEntity_Label(dsc.KeyEntity_Label());
    stored->setColPosition(dsc.ColPosition());
    return true;
}

CDataSourcesColumns::ColumnPtr CDataSourcesColumns::Item(const QString& key) const {
    return m_byKey.value(keyOf(key));
}

CDataSourcesColumns::ColumnPtr CDataSourcesColumns::Item(qint32 index) const {
    if (index < 1 || index > Count())
        return nullptr;
    return m_items[static_cast<std::size_t>(index - 1)];
}

void CDataSourcesColumns::Remove(const QString& key) {
    const QString folded = keyOf(key);
    const auto found = std::find(m_keys.begin(), m_keys.end(), folded);
    if (found == m_keys.end())
        throw Error(Texts::tr("There is no column named \"%1\".").arg(key));
    removeAt(static_cast<std::size_t>(found - m_keys.begin()));
}

void CDataSourcesColumns::Remove(qint32 index) {
    if (index < 1 || index > Count())
        throw Error(Texts::tr("There is no column number %1.").arg(index));
    removeAt(static_cast<std::size_t>(index - 1));
}

// The items go first to last, as removing the first until none is left would, but in one pass.
void CDataSourcesColumns::Clear() {
    m_byKey.clear();
    m_keys.clear();
    for (ColumnPtr& column : m_items)
        column.reset();
    m_items.clear();
}

std::shared_ptr<const CDataSourcesColumnsState> CDataSourcesColumns::SaveState() const {
    auto state = std::make_shared<CDataSourcesColumnsState>();
    state->edsId = m_edsId;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const ColumnPtr& column = m_items[i];
        state->items.push_back({m_keys[i], column, *column, column->Field_Id()});
    }
    return state;
}

void CDataSourcesColumns::RestoreState(const CDataSourcesColumnsState& state) {
    m_items.clear();
    m_keys.clear();
    m_byKey.clear();
    for (const auto& item : state.items) {
        *item.column = item.values;
        if (item.column->Field())
            item.column->Field()->setField_Id(item.fieldId);
        append(item.key, item.column);
    }
    m_edsId = state.edsId;
}

void CDataSourcesColumns::append(const QString& key, ColumnPtr column) {
    m_byKey.insert(key, column);
    m_keys.push_back(key);
    m_items.push_back(std::move(column));
}

void CDataSourcesColumns::removeAt(std::size_t index) {
    m_byKey.remove(m_keys[index]);
    m_keys.erase(m_keys.begin() + static_cast<std::ptrdiff_t>(index));
    m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(index));
}

} // namespace Orvane
