#include "datatable/TableSchema.h"

TableDeclaration::~TableDeclaration() = default;
