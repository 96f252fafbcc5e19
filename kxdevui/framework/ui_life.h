// For authors of controls: which control objects are alive.
//
// A control object belongs to the host, which may delete it at any time: inside one of the control's own callbacks, or
// while a container still lists it or a window still points to it. So the library keeps a list of the objects that
// live, outside of the objects, and asks it before it touches an object after a call that may have ended it.
#pragma once

#include <kxdevui/framework/kxdevui_api.h>

namespace kx::ui {

// The list of the living; static functions only.
class KXDEVUI_API Life {
public:
    // Called by the constructors and the destructor of a control.
    static void Begin(const void* object);
    static void End(const void* object) noexcept;

    // Whether there is a control at this address. Any pointer may be asked for.
    static bool IsAlive(const void* object) noexcept;

    // A number that no other object has had; 0 when the object does not live. It tells an object from a later one at
    // the same address.
    static unsigned long long SerialOf(const void* object) noexcept;
};

// Remembers one object over a call to the host: `const Alive alive(this); OnCommand(...); if (!alive) return;`
class Alive {
public:
    // Remembers the object as it is now; null is never alive.
    explicit Alive(const void* object) noexcept : m_object(object), m_serial(Life::SerialOf(object)) {}
    // Whether that very object still lives.
    explicit operator bool() const noexcept { return m_serial != 0 && Life::SerialOf(m_object) == m_serial; }

private:
    const void* m_object;
    unsigned long long m_serial;
};

}  // namespace kx::ui
