#include "held_values.h"

HeldValues& Held() {
    static HeldValues values;
    return values;
}
