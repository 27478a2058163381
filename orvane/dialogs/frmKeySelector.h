#pragma once

#include <QDialog>
#include <QString>
#include <memory>

class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace Orvane {

class CDataSourcesColumns;
class IEntity;
class IField;

// "Select Key Field": picks the key field of a column in the entity tree and the key's ordinal,
// which must lie between 1 and 500 and not be taken by another live key column.
//
// Caller's order: construct, setColumns, Initialize, HostRegistry::App().ShowModal(dialog), then
// read Cancel() and, when false, Ordinal(), EntityID(), FieldId() and FieldName().
class frmKeySelector : public QDialog {
    Q_OBJECT

public:
    static constexpr qint32 MinOrdinal = 1;
    static constexpr qint32 MaxOrdinal = 500;

    explicit frmKeySelector(QWidget* parent = nullptr);
    ~frmKeySelector() override;

    // The document's columns, owned by the document; set before Initialize.
    CDataSourcesColumns* Columns() const { return m_columns; }
    void setColumns(CDataSourcesColumns* columns) { m_columns = columns; }

    // ordinal above 0 is shown; fieldId above 0 names the key field being edited.
    void Initialize(qint32 ordinal, qint32 fieldId);

    qint32 Ordinal() const { return m_ordinal; }
    void setOrdinal(qint32 ordinal);
    // The field chosen in the tree, else the one given to Initialize.
    qint32 FieldId() const;
    // The entity chosen in the tree, else 0.
    qint32 EntityID() const;
    // "<entity label>: <field name>" of the key field; empty when there is none.
    QString FieldName() const;
    bool Cancel() const { return m_cancel; }

public slots:
    // Closing by any other way than OK (Escape, the window's close button) cancels.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createControls();
    void layoutControls();
    void selectField();
    void ordinalTextChanged(const QString& text);
    void confirm();
    void refuse(const QString& message, QWidget* focus);
    bool ordinalInUse() const;

    QLabel* lblField = nullptr;
    QLineEdit* txtField = nullptr;
    QPushButton* cmdSelect = nullptr;
    QLabel* lblOrdinal = nullptr;
    QLineEdit* txtOrdinal = nullptr;
    // The up-down arrows beside txtOrdinal; its own number box is narrowed away.
    QSpinBox* udOrdinal = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;

    CDataSourcesColumns* m_columns = nullptr;
    qint32 m_ordinal = 0;
    qint32 m_initialOrdinal = 0;
    qint32 m_fieldId = 0;
    std::shared_ptr<IField> m_keyField;
    std::shared_ptr<IEntity> m_fieldCategory;
    bool m_cancel = true;
};

} // namespace Orvane
