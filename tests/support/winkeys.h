#pragma once

// Key presses through the Windows input queue (SendInput), as a user types them.
#ifdef _WIN32

#include <windows.h>

#include <initializer_list>
#include <vector>

// Presses the keys in order, then releases them in reverse order.
inline bool pressKeyChord(std::initializer_list<WORD> keys)
{
    std::vector<INPUT> inputs;
    for (WORD key : keys) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        inputs.push_back(input);
    }
    for (auto it = keys.end(); it != keys.begin();) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = *--it;
        input.ki.dwFlags = KEYEVENTF_KEYUP;
        inputs.push_back(input);
    }
    return SendInput(UINT(inputs.size()), inputs.data(), sizeof(INPUT)) == inputs.size();
}

#endif
