#include "codegen/CodeFileConversion.h"
