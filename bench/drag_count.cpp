#include "CanvasDesk.h"

#include <charconv>
#include <cstring>
#include <iostream>

// One stroke in progress of so many drags, on so many settled ones, each drag drawn. What a drag
// costs is the difference of two runs: see instructions.sh, which counts their instructions.

namespace {

bool parse(const char *text, int &number)
{
    const char *end = text + std::strlen(text);
    const auto [last, error] = std::from_chars(text, end, number);
    return error == std::errc() && last == end && number >= 0;
}

} // namespace

int main(int argc, char **argv)
{
    int settled = 0;
    int drags = 0;
    if (argc != 3 || !parse(argv[1], settled) || !parse(argv[2], drags)) {
        std::cerr << "usage: drag_count SETTLED_STROKES DRAGS\n";
        return 2;
    }
    orv::bench::CanvasDesk desk;
    desk.settle(settled);
    desk.press();
    for (int i = 1; i <= drags; ++i) {
        desk.drag(i);
    }
    return 0;
}
