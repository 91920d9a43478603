#!/usr/bin/env python3
"""Writes lower_case.h: the letters beyond ASCII that have a lower case, by Unicode's data.

    formats/text/make_lower_case.py >formats/text/lower_case.h && clang-format -i formats/text/lower_case.h
"""

import unicodedata


def lower(code):
    """Of a letter whose lower case is more than one character, the first one counts."""
    return ord(chr(code).lower()[0])


def is_surrogate(code):
    return 0xD800 <= code < 0xE000


def ranges():
    """Runs of letters that lie one or two apart and equally far from their lower cases."""
    distances = {code: lower(code) - code
                 for code in range(0x80, 0x110000) if not is_surrogate(code) and lower(code) != code}
    left = sorted(distances)
    while left:
        first = left[0]

        def run(step):
            last = first
            while distances.get(last + step) == distances[first] and (
                    step == 1 or last + 1 not in distances):
                last += step
            return last

        step = max((1, 2), key=lambda step: (run(step) - first) // step)
        last = run(step)
        yield first, last, step, distances[first]
        left = [code for code in left if code > last]


def main():
    print(f"""#pragma once

// Made by make_lower_case.py from Unicode {unicodedata.unidata_version}.

#include <cstdint>

namespace intake {{

/// Letters from `first` to `last`, `step` apart, and how far from each its lower case lies.
struct LowerCaseRange {{
    char32_t first;
    char32_t last;
    char32_t step;
    int32_t distance;
}};

/// In their order.
constexpr LowerCaseRange LOWER_CASE[] = {{""")
    for first, last, step, distance in ranges():
        print(f"    {{0x{first:X}, 0x{last:X}, {step}, {distance}}},")
    print("""};

}  // namespace intake""")


main()
