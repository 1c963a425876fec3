#include "common.h"

/* All in calls of keys_scan, that is in steps of 10 ms. */
#define SETTLE_TIME  3
#define REPEAT_FIRST 60
#define REPEAT_NEXT  12

static unsigned char last;              /* previous raw sample */
static unsigned char same;              /* for how long it has not changed */
static unsigned char stable;            /* keys that are down, debounced */
static unsigned char wait;              /* time left until the next repeat */

unsigned char keys_scan(unsigned char down, unsigned char repeating)
{
    unsigned char pressed;

    if (down != last) {
        last = down;
        same = 0;
        return 0;
    }
    if (same < SETTLE_TIME) {
        if (++same < SETTLE_TIME)
            return 0;
        pressed = down & ~stable;
        stable = down;
        wait = REPEAT_FIRST;
        return pressed;
    }
    if (!(stable & repeating) || --wait)
        return 0;
    wait = REPEAT_NEXT;
    return stable & repeating;
}
