#include "platform/media/DynamicLibrary.h"

#include <dlfcn.h>

DynamicLibrary::DynamicLibrary(const char* name)
    : m_handle(dlopen(name, RTLD_LAZY | RTLD_LOCAL))
{
}

void* DynamicLibrary::address(const char* name) const { return m_handle ? dlsym(m_handle, name) : nullptr; }
