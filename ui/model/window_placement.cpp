#include "window_placement.h"

#include <algorithm>

namespace vv {
namespace {

// One axis: the start and length that fit [workStart, workEnd).
void FitSpan(int& start, int& length, int workStart, int workEnd, bool mayShrink) {
    const int room = workEnd - workStart;
    if (length > room && mayShrink)
        length = std::max(room, 0);
    start = std::max(std::min(start, workEnd - length), workStart);
}

}  // namespace

WinRect FitToWorkArea(const WinRect& window, const WinRect& work, bool mayShrink) {
    int left = window.left, width = window.right - window.left;
    int top = window.top, height = window.bottom - window.top;
    FitSpan(left, width, work.left, work.right, mayShrink);
    FitSpan(top, height, work.top, work.bottom, mayShrink);
    return {left, top, left + width, top + height};
}

}  // namespace vv
