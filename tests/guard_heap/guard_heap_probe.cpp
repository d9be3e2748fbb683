// SPDX-License-Identifier: MIT
// guard_heap_probe FAULT: does what a guarded heap must not let pass, and ends with status 3 when it was
// stopped.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

namespace {

LONG CALLBACK stopped(EXCEPTION_POINTERS*) {
    ::ExitProcess(3);
}

volatile char s_sink;

/// What must not be stopped: blocks of many sizes, also those that the runtime's DLL takes from or gives to
/// us.
void useWell() {
    std::string text;
    for (std::size_t size = 0; size < 9000; size += 7) {
        char* block = new char[size];
        std::memset(block, 'x', size);
        text.assign(block, size);
        delete[] block;
        block = static_cast<char*>(std::realloc(std::calloc(size, 3), 2 * size + 1));
        s_sink = block[2 * size];
        std::free(block);
    }
    std::stringstream stream;
    stream << text << text;
    std::getline(stream, text);
    try {
        throw std::string(text, 1);
    } catch (const std::string& caught) {
        s_sink = caught[0];
    }
}

bool doFault(const std::string& fault) {
    volatile char* block = nullptr;
    if (fault == "none") {
        useWell();
    } else if (fault == "write-behind-odd-size") {
        block = new char[17];
        block[17] = 1;
    } else if (fault == "read-behind-16") {
        block = static_cast<char*>(std::malloc(160));
        s_sink = block[160];
    } else if (fault == "write-behind-slack") { // noticed by the pattern, when it is freed
        block = new char[20];
        block[20] = 1;
        delete[] const_cast<char*>(block);
    } else if (fault == "write-before") {
        block = new char[32];
        block[-1] = 1;
        delete[] const_cast<char*>(block);
    } else if (fault == "read-freed") {
        block = new char[32];
        delete[] const_cast<char*>(block);
        s_sink = block[0];
    } else if (fault == "free-twice") {
        block = new char[32];
        delete[] const_cast<char*>(block);
        delete[] const_cast<char*>(block);
    } else {
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    ::SetUnhandledExceptionFilter(&stopped);
    if (::LoadLibraryA("guard_heap.dll") == nullptr || argc != 2 || !doFault(argv[1])) return 2;
    return 0;
}
