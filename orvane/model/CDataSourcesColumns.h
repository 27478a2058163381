#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

namespace Orvane {

class CDataSourcesColumn;
class CDataSourcesColumnsState;
class IEntity;

// The columns of a data source in insertion order, keyed by trimmed column name without regard
// to case. Columns marked deleted stay in the collection until the save removes their rows.
class CDataSourcesColumns {
public:
    using ColumnPtr = std::shared_ptr<CDataSourcesColumn>;

    CDataSourcesColumns();
    ~CDataSourcesColumns();
    CDataSourcesColumns(const CDataSourcesColumns&) = delete;
    CDataSourcesColumns& operator=(const CDataSourcesColumns&) = delete;

    // The first column flagged as the time stamp, or null.
    ColumnPtr TSColumn() const;
    // The smallest free position from 1 to 500; 501 when all are taken.
    qint32 FirstFreePosition() const;
    // True when a column (deleted ones included) other than the one named dsName sits at ord.
    bool PositionInUse(qint32 ord, const QString& dsName) const;
    // True when a column that is not deleted has the key ordinal ord.
    bool OrdInUse(qint32 ord) const;
    qint32 ActiveColumns() const;
    qint32 BiggestOrdinal() const;
    // True when a key column (deleted ones included) has the ordinal lKey; always false for lKey <=
    // 0.
    bool KeyExists(qint32 lKey) const;
    // True when a column other than self maps a field of that name; field names compare without
    // regard to case, as the dictionary does.
    bool FieldNameUsedElsewhere(const CDataSourcesColumn& self, const QString& name) const;
    // Fills the collection with the stored columns of a data source, their fields and key fields.
    void LoadColumns(qint32 EDS_Id);

    ColumnPtr Add(const QString& name);
    bool AddItem(const CDataSourcesColumn& dsc);

    const std::shared_ptr<IEntity>& Entity() const { return m_entity; }
    void setEntity(std::shared_ptr<IEntity> entity) { m_entity = std::move(entity); }
    qint32 EDS_Id() const { return m_edsId; }
    void setEDS_Id(qint32 id) { m_edsId = id; }

    // Null when there is no such column.
    ColumnPtr Item(const QString& key) const;
    ColumnPtr Item(qint32 index) const; // 1-based
    qint32 Count() const { return static_cast<qint32>(m_items.size()); }
    // A missing key is an Orvane::Error.
    void Remove(const QString& key);
    void Remove(qint32 index);
    bool Exists(const QString& key) const { return Item(key) != nullptr; }
    bool Exists(qint32 index) const { return Item(index) != nullptr; }
    void Clear();

    // Everything a save may change (membership, ids, flags, the field ids of mapped fields), so
    // that a host whose save failed and was rolled back can put the columns back as they were
    // and let the user retry. The column objects keep their identity.
    std::shared_ptr<const CDataSourcesColumnsState> SaveState() const;
    void RestoreState(const CDataSourcesColumnsState& state);

    // Enumeration in collection order.
    std::vector<ColumnPtr>::const_iterator begin() const { return m_items.begin(); }
    std::vector<ColumnPtr>::const_iterator end() const { return m_items.end(); }

private:
    // Adds a column under its lookup key (keyOf of its name).
    void append(const QString& key, ColumnPtr column);
    void removeAt(std::size_t index);
    static QString keyOf(const QString& name);

    std::vector<ColumnPtr> m_items;
    std::vector<QString> m_keys; // the lookup key of each item, in step with m_items
    QHash<QString, ColumnPtr> m_byKey;
    std::shared_ptr<IEntity> m_entity;
    qint32 m_edsId = 0;
};

} // namespace Orvane
