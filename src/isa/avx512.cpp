// AVX-512 F, BW, VL, DQ and VBMI.
#include "isa/table.h"

const vexlor::Kernels vexlor::avx512_kernels = vexlor::table;
