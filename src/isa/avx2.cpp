// AVX2 and FMA.
#include "isa/table.h"

const vexlor::Kernels vexlor::avx2_kernels = vexlor::table;
