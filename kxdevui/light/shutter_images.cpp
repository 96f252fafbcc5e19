#include <kxbaseui/kx_bitmappool.h>
#include <kxdevices/kx_dmapi.h>
#include <kxdevui/framework/devgui.h>
#include <kxdevui/light/shutter_rules.h>

int GetCommonImageFromPool(int id) {
    switch (id) {
    case eKxCommonImage_ShutterOpen: return CKxBitmapPool::AddImageBaseUI(L"SHUTTER_OPEN");
    case eKxCommonImage_ShutterClosed: return CKxBitmapPool::AddImageBaseUI(L"SHUTTER_CLOSED");
    default: return CKxBitmapPool::NoImage;
    }
}

int GetShutterImageFromPool(CDMApi_LogDevId id, bool on, int grabberActive) {
    const int common = on ? eKxCommonImage_ShutterOpen : eKxCommonImage_ShutterClosed;
    if (DMApi::LogDev_GetType(id) != eKxDeviceType_Shutter) return GetCommonImageFromPool(common);
    const int type = DMApi::Shutter_GetShutterType(id);
    const int image = CKxBitmapPool::AddImageBaseUI(kx::shutter::ImageName(type, on, grabberActive != 0));
    return image != CKxBitmapPool::NoImage ? image : GetCommonImageFromPool(common);
}
