#pragma once

#include <QDialog>
#include <memory>

class QComboBox;
class QPushButton;

namespace Orvane {

class IEntity;
class IField;
class XTemplate;

// Picks an entity, or an entity and one of its fields, from the host's template tree, refusing
// what the dictionary does not allow for external data.
class FSelectEntityTree : public QDialog {
    Q_OBJECT

public:
    static constexpr qint32 EntityAndFieldMode = 0;
    static constexpr qint32 EntityOnlyMode = 2;

    explicit FSelectEntityTree(QWidget* parent = nullptr);
    ~FSelectEntityTree() override;

    void Initialize(const QString& sCaption, qint32 lMode, const QString& sSchema,
                    qint32 lSelectId);

    bool Ok() const { return m_ok; }
    const std::shared_ptr<IEntity>& FieldCategory() const { return m_fieldCategory; }
    const std::shared_ptr<IField>& Field() const { return m_field; }
    bool EntityOnly() const { return m_entityOnly; }

private:
    void createControls();
    void prepareEntityMode();
    void prepareEntityAndFieldMode();
    void layoutControls();
    void confirmSelection();
    void chooseField(const std::shared_ptr<IField>& field, const QString& entityKey);
    void applyTypeFilter(const QString& filterName);
    void applyTechTypeFilter(const QString& techType);
    void refuse(const QString& what);

    QComboBox* cboTypeFilter = nullptr;
    QComboBox* cboTechTypeFilter = nullptr;
    XTemplate* tpl = nullptr;
    // cmdButton(0) cancels, cmdButton(1) confirms.
    QPushButton* cmdButton[2] = {nullptr, nullptr};

    std::shared_ptr<IEntity> m_fieldCategory;
    std::shared_ptr<IField> m_field;
    bool m_ok = false;
    bool m_entityOnly = false;
};

} // namespace Orvane
