#pragma once

#include "orvane/editors/SourceSettingsEditor.h"

#include <memory>

class QPushButton;

namespace Orvane {

class CDataSourcesData;
class FileNameEdit;

// The settings of an ASCII data source: description, data file, delimiter and time series.
// A view of the document: the host copies the properties into it after IsValid.
class XDataSourcesGen : public SourceSettingsEditor {
    Q_OBJECT
    Q_PROPERTY(
        QString Description READ Eds_Description WRITE setEds_Description NOTIFY DescriptionChanged)
    Q_PROPERTY(QString Eds_File READ Eds_File WRITE setEds_File NOTIFY Eds_FileChanged)
    Q_PROPERTY(
        QString Eds_Delimeter READ Eds_Delimeter WRITE setEds_Delimeter NOTIFY Eds_DelimeterChanged)

public:
    explicit XDataSourcesGen(QWidget* parent = nullptr);
    ~XDataSourcesGen() override;

    // Needed before the user unchecks the time-series box of a stored document.
    void setData(std::shared_ptr<CDataSourcesData> value);

    QString Eds_Description() const;
    void setEds_Description(const QString& value);
    QString Eds_File() const;
    void setEds_File(const QString& value);
    // One of " ", ":", ",", "/" and tab; empty when no delimiter is selected.
    QString Eds_Delimeter() const;
    // Any other value clears the selection and is shown, trimmed, in the box.
    void setEds_Delimeter(const QString& value);

    void InitializeDefaults();
    void Initialize(const QString& sDesc, const QString& sFile, const QString& sDelim,
                    bool bIsTimeSeries, qint32 lFreq);
    bool IsValid(const QString& sMsgBoxTitle);

signals:
    void DescriptionChanged(const QString& value);
    void Eds_FileChanged(const QString& value);
    void Eds_DelimeterChanged(const QString& value);
    // The file name or the delimiter changed, by the user or not; for views of the file.
    void sourceEdited();

protected:
    void timeSeriesClicked(bool checked) override;

private:
    void createControls();
    void fillDelimiters();
    void layoutControls();
    bool timeStampRemovalRefused();
    // Lets the user pick the data file through the host; the path then counts as typed.
    void browseForFile();

    QLabel* lblDesc = nullptr;
    QLineEdit* txtDescription = nullptr;
    QLabel* lblFile = nullptr;
    FileNameEdit* txtFile = nullptr;
    QPushButton* cmdBrowse = nullptr;
    QLabel* lblDelimeter = nullptr;
    QComboBox* cboDelimeter = nullptr;

    std::shared_ptr<CDataSourcesData> m_data;
    // Swallows the click the control causes itself when it re-checks the box.
    bool IgnoreNextTimeSeriesClick = false;
};

} // namespace Orvane
