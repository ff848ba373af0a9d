#include "Message.h"

namespace frigana {}
