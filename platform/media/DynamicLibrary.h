// A shared library that is loaded when it is first needed, not when the program starts.
//
// The decoders' libraries pull in a hundred others: linked in the plain way they made an empty program
// start 28 ms later and 20 MiB larger, before anybody had asked for a sound. A loaded library stays.
#pragma once

class DynamicLibrary {
public:
    explicit DynamicLibrary(const char* name);

    bool isLoaded() const { return m_handle != nullptr; }
    // Sets the pointer to the function of that name, in the library or in those it needs; null without one.
    template <typename Function> bool resolve(const char* name, Function*& function) const
    {
        function = reinterpret_cast<Function*>(address(name));
        return function != nullptr;
    }

private:
    void* address(const char* name) const;

    void* m_handle;
};
