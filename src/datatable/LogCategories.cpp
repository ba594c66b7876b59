#include "datatable/LogCategories.h"

namespace LogCategories {

Q_LOGGING_CATEGORY(update, "zglobal.update")
Q_LOGGING_CATEGORY(load, "zglobal.load")
Q_LOGGING_CATEGORY(resource, "zglobal.resource")
Q_LOGGING_CATEGORY(tidy, "zglobal.tidy")

} // namespace LogCategories
