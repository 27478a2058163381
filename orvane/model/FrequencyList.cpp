#include "orvane/model/FrequencyList.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "orvane/model/ConnectionCache.h"
#include "orvane/model/MSQL.h"

namespace Orvane::FrequencyList {

namespace {

QList<FrequencyItem> load(IQueryService& query) {
    QList<FrequencyItem> items;
    const auto rst = query.OpenRecordset(MSQL::FrequencyListQuery(QStringLiteral("T")), 60);
    for (; rst && !rst->Eof(); rst->MoveNext()) {
        items.append({query.ValueAsLong(rst->Value(QStringLiteral("frequency_id"))),
                      rst->Value(QStringLiteral("Description")).toString()});
    }
    return items;
}

} // namespace

const QList<FrequencyItem>& Items() {
    static ConnectionCache<QList<FrequencyItem>> cache;
    return cache.Get([] { return load(HostRegistry::Query()); });
}

QString DescriptionOf(qint32 frequencyId) {
    for (const FrequencyItem& item : Items()) {
        if (item.frequency_id == frequencyId)
            return item.Description;
    }
    return QString();
}

qint32 IdOf(const QString& description) {
    for (const FrequencyItem& item : Items()) {
        if (item.Description == description)
            return item.frequency_id;
    }
    return 0;
}

} // namespace Orvane::FrequencyList
