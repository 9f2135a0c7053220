// What every processor of the target architecture has.
#include "isa/table.h"

const vexlor::Kernels vexlor::baseline_kernels = vexlor::table;
