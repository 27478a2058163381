#include "orvane/columns/ColumnNamePrompt.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"

#include <QCoreApplication>

namespace Orvane::ColumnNamePrompt {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::ColumnNamePrompt)
};

enum class Wording { Adding, Renaming, Unique };

QString promptFor(Wording wording) {
    switch (wording) {
    case Wording::Renaming:
        return Texts::tr("Please enter new column name");
    case Wording::Unique:
        return Texts::tr("Please enter a unique column name");
    case Wording::Adding:
        break;
    }
    return Texts::tr("Please enter column name");
}

QString titleFor(Wording wording) {
    switch (wording) {
    case Wording::Renaming:
        return Texts::tr("RENAMING COLUMN");
    case Wording::Unique:
        return Texts::tr("COLUMN NAME EXISTS");
    case Wording::Adding:
        break;
    }
    return Texts::tr("ADDING COLUMN");
}

// The column that the collection's Add would hand back for the name, which finds the time-stamp
// column under "Time Stamp" whatever it is called now.
std::shared_ptr<CDataSourcesColumn> existingColumn(const CDataSourcesColumns& columns,
                                                   const QString& name) {
    auto column = columns.Item(name);
    if (!column && name == QLatin1String("Time Stamp"))
        column = columns.TSColumn();
    return column;
}

} // namespace

Answer Ask(const CDataSourcesColumns& columns, qint32 lengthLimit,
           const CDataSourcesColumn* renaming) {
    IApplication& app = HostRegistry::App();
    Answer answer;
    const QString currentName = renaming ? renaming->Column_Name() : QString();
    Wording wording = renaming ? Wording::Renaming : Wording::Adding;
    for (;;) {
        const QString name =
            app.InputBox(promptFor(wording), titleFor(wording), currentName).trimmed();
        if (name.size() > lengthLimit) {
            // The text names 40 whatever the database allows.
            app.MsgBox(Texts::tr("Column name must be 40 characters or fewer."),
                       MsgBoxButtons::OKOnly, MsgBoxIcon::Exclamation, QString());
            answer.gotName = true;
            continue;
        }
        if (name.isEmpty())
            return answer;
        answer.gotName = true;
        const auto existing = existingColumn(columns, name);
        if (!existing) {
            answer.name = name;
            return answer;
        }
        if (existing->ColumnDeleted()) {
            if (app.MsgBox(Texts::tr("Do you wish to restore the existing column?"),
                           MsgBoxButtons::YesNo, MsgBoxIcon::None,
                           Texts::tr("COLUMN NAME EXISTS")) == MsgBoxResult::Yes) {
                answer.restore = existing;
                return answer;
            }
            wording = renaming ? Wording::Renaming : Wording::Unique;
        } else {
            app.MsgBox(
                Texts::tr("This column name is already in use.  Please enter a unique name."),
                MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, QString());
            wording = Wording::Adding;
        }
    }
}

} // namespace Orvane::ColumnNamePrompt
