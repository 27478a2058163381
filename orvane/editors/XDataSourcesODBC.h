#pragma once

#include "orvane/editors/SourceSettingsEditor.h"
#include "orvane/host/ISourceCatalog.h"
#include "orvane/sources/ColumnDetector.h"

#include <QList>

#include <initializer_list>

class QGroupBox;
class QPushButton;
class QToolButton;

namespace Orvane {

// The settings of an ODBC data source: server, database and table, the login, and the time
// series. A view of the document: the host copies the properties into it after IsValid.
// When the host installed a source catalog, the login can be tested and the table chosen from
// the database's list.
class XDataSourcesODBC : public SourceSettingsEditor {
    Q_OBJECT
    Q_PROPERTY(QString Server READ Server WRITE setServer NOTIFY ServerChanged)
    Q_PROPERTY(QString Database READ Database WRITE setDatabase NOTIFY DatabaseChanged)
    Q_PROPERTY(QString Table READ Table WRITE setTable NOTIFY TableChanged)
    Q_PROPERTY(QString UserId READ UserId WRITE setUserId NOTIFY UserIdChanged)
    Q_PROPERTY(QString Password READ Password WRITE setPassword NOTIFY PasswordChanged
                   DESIGNABLE false STORED false)

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

    // The table's columns as the host's catalog reads them, as the grid's Detect Columns takes
    // them: positions 1..n in the catalog's order, types as the one-letter codes. Without a
    // catalog, server or table, or when reading fails, the reason is in its error.
    ColumnDetection TableDetection() const;

signals:
    void ServerChanged(const QString& value);
    void DatabaseChanged(const QString& value);
    void TableChanged(const QString& value);
    void UserIdChanged(const QString& value);
    void PasswordChanged(const QString& value);

protected:
    void timeSeriesClicked(bool checked) override;

private:
    void createControls();
    QGroupBox* createFrame(const QString& name, const QString& caption);
    QLineEdit* createSettingBox(const QString& name, QWidget* frame);
    void orderTabs();
    void createCatalogButtons();
    void layoutControls();
    struct FrameRow {
        QLabel* label;
        QLineEdit* textBox;
        QWidget* button = nullptr;
    };
    static void layoutFrame(QGroupBox* frame, std::initializer_list<FrameRow> rows);
    void showCatalogControls();

    SourceLogin login() const;
    // Asks for the server first when it is empty; the title is the command's.
    bool catalogReady(const QString& title);
    void testConnection();
    void pickTable();

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
    QToolButton* cmdTables = nullptr;
    QPushButton* cmdTestConnection = nullptr;
    QList<QLineEdit*> m_textBoxes;
};

} // namespace Orvane
