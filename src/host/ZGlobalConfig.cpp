#include "host/ZGlobalConfig.h"
