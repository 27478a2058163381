#include "orvane/host/IField.h"
#include "studio/dictionary/DictionaryField.h"
#include "tests/integration/StudioDictionaryTest.h"
#include "tests/support/QtPrinters.h"

#include <gmock/gmock.h>

namespace Orvane::Testing {

using ::testing::HasSubstr;

class DictionaryFieldSaveTest : public StudioDictionaryTest {
protected:
    // What the field editor sends for a field, with the demo's values for Call_Attempts.
    static FieldSaveRequest requestFor(qint32 fieldId, const QString& name, qint32 entityId = 7) {
        FieldSaveRequest request;
        request.fieldId = fieldId;
        request.name = name;
        request.entityId = entityId;
        request.appGroup = "Traffic";
        request.kind = "X";
        request.technologyMask = 3;
        request.dataTypeCode = "I";
        request.aggregationPairId = 1;
        request.ownerId = 7;
        request.savedAt = QDateTime(QDate(2024, 5, 31), QTime(13, 45));
        return request;
    }

    std::shared_ptr<IField> field(qint32 id) { return service->FieldById("Traffic", id); }

    QString text(const QString& statement) { return scalar(statement).toString().trimmed(); }
};

INSTANTIATE_TEST_SUITE_P(Databases, DictionaryFieldSaveTest, AllDatabases(), targetName);

TEST_P(DictionaryFieldSaveTest, StoredFieldIsWrittenAtOnce) {
    const auto attempts = field(4);
    ASSERT_TRUE(attempts);
    FieldSaveRequest request = requestFor(4, "  Call_Attempts_Total ");
    request.description = "All call set-up attempts, O'Brien's count";
    request.heading1 = "Calls";
    request.heading2 = "Tried";
    request.aggregationPairId = 2;
    request.technologyMask = 1 | 4;
    request.dataTypeCode = "F";
    request.style = 5;
    request.styleColour = 0x0000FF;
    request.extraColumns = {
        {"Counter", "pmCallAttemptsTotal"}, {"Vendor", QString()}, {"Unit", QString()}};
    QVariant result;
    ASSERT_TRUE(attempts->Save(request, result)) << attempts->LastError().description.toStdString();
    EXPECT_EQ(result, QVariant(4));

    EXPECT_EQ(text("SELECT name v FROM qvd_dict_name WHERE field_id = 4"), "Call_Attempts_Total");
    EXPECT_EQ(text("SELECT field_desc v FROM qvd_field_def WHERE field_id = 4"),
              request.description);
    EXPECT_EQ(count("qvd_field_def", "field_id = 4 AND field_aggregator = 2 AND datatype = 'F' AND "
                                     "field_style = 5 AND style_colour = 255 AND owner_id = 7"),
              1);
    EXPECT_EQ(count("qvd_field_tech", "field_id = 4"), 2);
    EXPECT_EQ(count("qvd_field_tech", "field_id = 4 AND tech_id = 3"), 1);
    EXPECT_EQ(text("SELECT extra_value v FROM qvd_field_extra "
                   "WHERE field_id = 4 AND extra_column_id = 1"),
              "pmCallAttemptsTotal");
    EXPECT_EQ(count("qvd_field_extra", "field_id = 4"), 1);
    // A column not in use keeps its value, whatever the editor sends for it.
    QVariant seizureResult;
    FieldSaveRequest seizures = requestFor(19, "Seizures", 8);
    seizures.extraColumns = {{"Unit", QString()}};
    ASSERT_TRUE(field(19)->Save(seizures, seizureResult));
    EXPECT_EQ(count("qvd_field_extra", "field_id = 19 AND extra_value = 'count'"), 1);

    // The object holds what the dictionary now holds, as a fresh lookup reads it.
    const auto reread = field(4);
    for (const auto& object : {attempts, reread}) {
        EXPECT_EQ(
            QStringList(
                {object->Field_Name(), object->TimeAggregator(), object->ElementAggregator(),
                 object->Technologies(), QString::number(object->TechnologyMask()),
                 QString::number(object->StyleColour()), object->ExtraColumnValue("Vendor")}),
            QStringList({"Call_Attempts_Total", "Sum", "Average", "GSM, LTE", "5", "255", ""}));
    }
}

TEST_P(DictionaryFieldSaveTest, TakenNamesAndRefusalsChangeNothing) {
    const auto attempts = field(4);
    QVariant result;

    EXPECT_FALSE(attempts->Save(requestFor(4, " cell_NAME "), result));
    EXPECT_EQ(attempts->LastError().code, 2);
    EXPECT_TRUE(attempts->LastError().flag);
    EXPECT_EQ(attempts->Field_Name(), "Call_Attempts");

    // Its own name in another case is no clash; a name of another entity is none either.
    EXPECT_TRUE(attempts->Save(requestFor(4, "CALL_ATTEMPTS"), result));
    EXPECT_TRUE(attempts->Save(requestFor(4, "Site_Name"), result));

    FieldSaveRequest badType = requestFor(4, "Other");
    badType.dataTypeCode = QString();
    FieldSaveRequest badPair = requestFor(4, "Other");
    badPair.aggregationPairId = 99;
    FieldSaveRequest badMask = requestFor(4, "Other");
    badMask.technologyMask = 16;
    for (const FieldSaveRequest& request : {badType, badPair, badMask}) {
        EXPECT_FALSE(attempts->Save(request, result));
        EXPECT_EQ(attempts->LastError().code, 1);
        EXPECT_FALSE(attempts->LastError().flag);
        EXPECT_FALSE(attempts->LastError().description.isEmpty());
    }
    EXPECT_EQ(text("SELECT name v FROM qvd_dict_name WHERE field_id = 4"), "Site_Name");

    // A database error comes back with the database's message, and nothing of the save stays.
    const auto region = field(27);
    db->ExecuteStatement("DELETE FROM qvd_field_def WHERE field_id = 27");
    EXPECT_FALSE(region->Save(requestFor(27, "Region_Label", 2), result));
    EXPECT_EQ(region->LastError().code, 1);
    EXPECT_THAT(region->LastError().description.toStdString(), HasSubstr("27"));
    EXPECT_EQ(region->Field_Name(), "Region_Name");
}

TEST_P(DictionaryFieldSaveTest, NewFieldIsKeptUntilTheDocumentCreatesIt) {
    const auto fresh = service->NewField();
    QVariant result;
    FieldSaveRequest request = requestFor(0, " TG_Overflow_Rate ", 8);
    request.aggregationPairId = 22;
    request.technologyMask = 2;
    request.heading1 = "Overflow";
    ASSERT_TRUE(fresh->Save(request, result)) << fresh->LastError().description.toStdString();
    EXPECT_EQ(result, QVariant(0));
    EXPECT_EQ(count("qvd_dict_name", "entity_id = 8"), 5);
    EXPECT_EQ(fresh->Field_Id(), 0);
    EXPECT_EQ(fresh->Field_Name(), "TG_Overflow_Rate");
    EXPECT_EQ(fresh->Entity_Label(), "Trunk Group");
    EXPECT_EQ(fresh->TimeAggregator(), "Average");
    EXPECT_EQ(fresh->ElementAggregator(), QString());
    EXPECT_EQ(fresh->Technologies(), "UMTS");

    EXPECT_FALSE(fresh->Save(requestFor(0, "seizures", 8), result));
    EXPECT_EQ(fresh->LastError().code, 2);
    EXPECT_FALSE(fresh->Save(requestFor(0, "Anything", 99), result));
    EXPECT_EQ(fresh->LastError().code, 1);
    // A new object cannot claim a stored field.
    EXPECT_FALSE(fresh->Save(requestFor(4, "Anything"), result));
    EXPECT_EQ(fresh->Field_Name(), "TG_Overflow_Rate");
}

} // namespace Orvane::Testing
