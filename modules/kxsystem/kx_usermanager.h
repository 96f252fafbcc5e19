// What the user who is at work may do.
#pragma once

#include <kxsystem/kxsystem_api.h>

// The rights that the library asks for, each a bit.
enum EKxUserRight : unsigned {
    eKxUserRight_DeviceSetup = 1024,  // change what is mounted on the microscope
};

// The rights of the current user; static functions only. A host that knows its users sets them after each change of the
// user; at first everything is allowed.
class KXSYSTEM_API CKxUserManager {
public:
    // Whether the user has all of these rights.
    static bool GetCurrentUserRights(unsigned rights) noexcept;
    static void SetCurrentUserRights(unsigned rights) noexcept;
};
