#include <kxsystem/kx_usermanager.h>

namespace {

unsigned s_rights = ~0u;

}  // namespace

bool CKxUserManager::GetCurrentUserRights(unsigned rights) noexcept { return (s_rights & rights) == rights; }
void CKxUserManager::SetCurrentUserRights(unsigned rights) noexcept { s_rights = rights; }
