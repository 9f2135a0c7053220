/* Preloaded into a program: its allocation number VEXLOR_FAIL_AT, counted from main on, fails. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stddef.h>
#include <stdlib.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t number, size_t size);
void* __libc_realloc(void* memory, size_t size);
void* __libc_memalign(size_t alignment, size_t size);

static long until_failure;

static int fails(void)
{
    if (until_failure == 0 || --until_failure != 0)
        return 0;
    errno = ENOMEM;
    return 1;
}

void* malloc(size_t size) { return fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t number, size_t size) { return fails() ? NULL : __libc_calloc(number, size); }
void* realloc(void* memory, size_t size) { return fails() ? NULL : __libc_realloc(memory, size); }
void* memalign(size_t alignment, size_t size) { return fails() ? NULL : __libc_memalign(alignment, size); }

/* The C library's start of a program, with this main between it and the program's own. */
typedef int main_fn(int count, char** arguments, char** environment);
static main_fn* own_main;

static int counting_main(int count, char** arguments, char** environment)
{
    const char* at = getenv("VEXLOR_FAIL_AT");
    until_failure = at != NULL ? atol(at) : 0;
    return own_main(count, arguments, environment);
}

int __libc_start_main(main_fn* start, int count, char** arguments, void (*init)(void), void (*fini)(void),
                      void (*loader_fini)(void), void* stack_end)
{
    int (*next)(main_fn*, int, char**, void (*)(void), void (*)(void), void (*)(void), void*);
    *(void**)&next = dlsym(RTLD_NEXT, "__libc_start_main");
    own_main = start;
    return next(counting_main, count, arguments, init, fini, loader_fini, stack_end);
}
