#pragma once

#include "orvane/editors/SourceSettingsEditor.h"

#include <QList>

#include <initializer_list>
#include <utility>

class QGroupBox;

namespace Orvane {

// The settings of an ODBC data source: server, database and table, the login, and the time
// series. A view of the document: the host copies the properties into it after IsValid.
class XDataSourcesODBC : public SourceSettingsEditor {
    Q_OBJECT

public:
    explicit XDataSourcesODBC(QWidget* parent = nullptr);
    ~XDataSourcesODBC() override;

    QString Server() const;
    void setServer(const QString& value);
    // What the document calls its schema.
    QString Database() const;
    void setDatabase(const QString& value);
    QString Table() const;
    void setTable(const QString& value);
    QString UserId() const;
    void setUserId(const QString& value);
    QString Password() const;
    void setPassword(const QString& value);

    void InitializeDefaults();
    void Initialize(bool bIsTimeSeries, qint32 lFreq, const QString& sServer,
                    const QString& sSchema, const QString& sTable, const QString& sUserId,
                    const QString& sPassword);
    bool IsValid(const QString& sMsgBoxTitle);

protected:
    void timeSeriesClicked(bool checked) override;

private:
    void createControls();
    QGroupBox* createFrame(const QString& name, const QString& caption);
    QLineEdit* createSettingBox(const QString& name, QWidget* frame);
    void orderTabs();
    void layoutControls();
    static void layoutFrame(QGroupBox* frame,
                            std::initializer_list<std::pair<QLabel*, QLineEdit*>> rows);

    QGroupBox* fraDatabase = nullptr;
    QLineEdit* txtDB_Table = nullptr;
    QLineEdit* txtDB_Database = nullptr;
    QLineEdit* txtDB_Server = nullptr;
    QLabel* lblTable = nullptr;
    QLabel* lblDatabase = nullptr;
    QLabel* lblServer = nullptr;
    QGroupBox* fraLogin = nullptr;
    QLineEdit* txtDB_Password = nullptr;
    QLineEdit* txtDB_UserId = nullptr;
    QLabel* lblPass = nullptr;
    QLabel* lblUser = nullptr;
    QList<QLineEdit*> m_textBoxes;
};

} // namespace Orvane
