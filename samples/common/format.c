#include "common.h"

__data char format_text[FORMAT_WIDTH + 1];

void format_fixed(int value, unsigned char places)
{
    unsigned int rest = value < 0 ? 0u - (unsigned int)value : (unsigned int)value;
    unsigned char at = FORMAT_WIDTH;
    unsigned char digits = 0;

    format_text[at] = 0;
    do {
        if (places && digits == places)
            format_text[--at] = '.';
        format_text[--at] = '0' + (unsigned char)(rest % 10);
        rest /= 10;
        digits++;
    } while (rest || digits <= places);
    if (value < 0)
        format_text[--at] = '-';
    while (at)
        format_text[--at] = ' ';
}
