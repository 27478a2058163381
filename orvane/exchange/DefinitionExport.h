#pragma once

#include "orvane/exchange/EdsDefinition.h"

namespace Orvane {

class CDataSourcesData;

// The text form of a loaded document: every id turned into the name it stands for, and each
// column's field with its definition, so that another database can create it.
class DefinitionExport {
public:
    static EdsDefinition FromDocument(const CDataSourcesData& document);
};

} // namespace Orvane
