// The peer of the extension's start: a dynamically linked C++ program that prints a line.

#include <iostream>

int main() {
    std::cout << "a line\n";
}
