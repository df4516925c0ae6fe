// The program's rows: functions of fixed size.
#include "rows.h"
#ifdef BENCH_GLM
#include <glm/glm.hpp>
#endif
#ifdef BENCH_CGLM
#include <cglm/version.h>
#endif

void bench::measureRows() {
#ifdef BENCH_GLM
    note("GLM", std::to_string(GLM_VERSION));
#endif
#ifdef BENCH_CGLM
    noteVersion("cglm", CGLM_VERSION_MAJOR, CGLM_VERSION_MINOR, CGLM_VERSION_PATCH);
#endif
    measureCalls();
    measureBatches();
}
