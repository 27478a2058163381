#pragma once

#include "orvane/host/IAppForm.h"
#include "orvane/host/IFieldInfoService.h"

#include <QDialog>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <utility>

class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Orvane {

class IEntity;
class IField;
class XTechnologies;

// The "Field Editor": creates a dictionary field of the data source's entity, or updates one,
// and saves it at once through the host's field object when the user presses OK.
//
// Caller's order: construct, InitializeForNew, HostRegistry::App().ShowModal(dialog), then read
// Ok() and, when true, Field().
class fFieldInfo : public QDialog, public IAppForm {
    Q_OBJECT

public:
    // The "kind" IAppForm_Kind reports for this form.
    static constexpr qint32 FormKind = 16;

    explicit fFieldInfo(QWidget* parent = nullptr);
    ~fFieldInfo() override;

    // field null: a new field of the given data type ("Integer", "Float" or "String").
    // Otherwise the field is edited and dataType is not used.
    void InitializeForNew(std::shared_ptr<IEntity> entity, const QString& dataType,
                          std::shared_ptr<IField> field);

    bool Ok() const { return m_ok; }
    bool Modified() const { return m_modified; }
    // The field being edited; after a successful OK the saved one.
    const std::shared_ptr<IField>& Field() const { return m_field; }

    // The naming rule of dictionary fields: 1 to maxLength characters, the first "_" or an ASCII
    // letter, the others "_", "%", ASCII letters or digits.
    static bool IsValidFieldName(const QString& name, qint32 maxLength);

    void* IAppForm_Document() const override { return nullptr; }
    QString IAppForm_HelpContextName() const override;
    bool IAppForm_IsLoadOk() const override { return m_isLoadOk; }
    qint32 IAppForm_Kind() const override { return FormKind; }
    QString IAppForm_Name() const override { return windowTitle(); }
    void IAppForm_SaveState() override {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using ExtraValues = QList<std::pair<QString, QString>>;

    void createControls();
    void layoutControls();
    QComboBox* createList(const char* name);
    void addExtraColumnPair(const QString& column, const QString& value);
    void connectEdits();
    void load();

    void readField(const IField& field);
    void clearMembers(const QString& dataType);
    void layoutAndFill();
    void applyAggregatorMode();
    void fillAggregatorList(QComboBox& list, const QString& stored);
    void fillDataTypeList();
    void applyEditPermission();
    QString caption() const;
    void refreshStyleSample();

    void markModified() { m_modified = true; }
    void coupleAggregators(QComboBox& picked, QComboBox& other);
    QString elementAggregatorText() const;
    void chooseStyle();
    void confirm();
    // Runs an event handler; a library error it raises is shown under the dialog's caption.
    bool reported(const std::function<void()>& handler);
    void cancel();
    bool validate();
    bool refuse(const QString& message, QWidget* focus);
    void rebuildExtraColumns();
    void takeMembersFromForm();
    void save();
    void reportSaveFailure(qint32 code, bool flag, const QString& description);

    qint32 entityId() const;
    QString entityName() const;
    static QString extraValue(const ExtraValues& values, const QString& column);

    QLabel* lblName = nullptr;
    QLineEdit* txtName = nullptr;
    QLabel* lblDescription = nullptr;
    QLineEdit* txtDescription = nullptr;
    QLabel* lblHeadingRow1 = nullptr;
    QLineEdit* txtHeadingRow1 = nullptr;
    QLabel* lblHeadingRow2 = nullptr;
    QLineEdit* txtHeadingRow2 = nullptr;
    QLabel* lblDataType = nullptr;
    QComboBox* cboDataType = nullptr;
    QLabel* lblTimeAggregator = nullptr;
    QComboBox* cboTimeAggregator = nullptr;
    QLabel* lblElementAggregator = nullptr;
    QComboBox* cboElementAggregator = nullptr;
    // One label and box per extra column in use, in the dictionary's order, numbered from 1;
    // element 0 is a hidden pair that keeps that numbering.
    QList<QLabel*> lblExt;
    QList<QLineEdit*> txtExt;
    QLabel* lblTechnology = nullptr;
    XTechnologies* xTech = nullptr;
    QLabel* lblStyle = nullptr;
    QLineEdit* txtStyle = nullptr;
    QPushButton* cmdStyle = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdHelp = nullptr;

    QDialogButtonBox* m_buttons = nullptr;
    QFormLayout* m_form = nullptr;
    int m_extraRow = 0; // where the next extra-column pair goes

    std::shared_ptr<IEntity> m_entity;
    std::shared_ptr<IField> m_field;
    bool m_isNew = true;
    bool m_ok = false;
    bool m_modified = false;
    bool m_isLoadOk = false;
    bool m_registered = false;
    bool m_elementAggregation = true;
    FieldTextLimits m_limits;

    qint32 m_fieldId = 0;
    qint32 m_ownerId = 0;
    QString m_name;
    QString m_description;
    QString m_heading1;
    QString m_heading2;
    QString m_timeAggregator;
    QString m_elementAggregator;
    QString m_dataType;
    QString m_technologies;
    ExtraValues m_extraColumns;
    qint32 m_style = 0;
    qint32 m_styleColour = 0;
};

} // namespace Orvane
