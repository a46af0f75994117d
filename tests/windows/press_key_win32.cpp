// Presses a key for everybody and lets go of it, as somebody does who types in another program.
//   press-key.exe VIRTUAL_KEY_CODE [hold]
// With "hold" it then stays for two minutes, and with it the desktop that remembers the key.

#include <windows.h>

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    if (count < 2) {
        return 2;
    }
    INPUT inputs[2] = {};
    for (INPUT& input : inputs) {
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = static_cast<WORD>(std::atoi(arguments[1]));
    }
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    if (SendInput(2, inputs, sizeof(INPUT)) != 2) {
        return 1;
    }
    std::puts("pressed");
    std::fflush(stdout);
    if (count > 2) {
        Sleep(120000);
    }
    return 0;
}
