// English texts of the dialog templates
#undef TEXT_CAMERA
#define TEXT_CAMERA "Camera"
#undef TEXT_EXPOSURE
#define TEXT_EXPOSURE "Exposure time"
#undef TEXT_BINNING
#define TEXT_BINNING "Binning"
#undef TEXT_LIVE
#define TEXT_LIVE "Live image"
#undef TEXT_SNAP
#define TEXT_SNAP "Snap"
#undef TEXT_TRANSMITTED
#define TEXT_TRANSMITTED "Transmitted light"
#undef TEXT_REFLECTED
#define TEXT_REFLECTED "Reflected light"
#undef TEXT_LAMP_ON
#define TEXT_LAMP_ON "Lamp on"
#undef TEXT_LEVEL
#define TEXT_LEVEL "Intensity"
#undef TEXT_STAND
#define TEXT_STAND "Stand"
#undef TEXT_TUBE
#define TEXT_TUBE "Light to the eyepieces"
#undef TEXT_CONDENSER
#define TEXT_CONDENSER "Condenser"
#undef TEXT_CONDENSER_IN
#define TEXT_CONDENSER_IN "Front lens in"
#undef TEXT_CONDENSER_TOP
#define TEXT_CONDENSER_TOP "Front lens out (low power)"
#undef TEXT_SERIES
#define TEXT_SERIES "Time series"
#undef TEXT_SERIES_HEAD
#define TEXT_SERIES_HEAD "Planned series"
#undef TEXT_SERIES_COUNT
#define TEXT_SERIES_COUNT "Number of images"
#undef TEXT_SERIES_INTERVAL
#define TEXT_SERIES_INTERVAL "Interval"
#undef TEXT_OK
#define TEXT_OK "OK"
#undef TEXT_CANCEL
#define TEXT_CANCEL "Cancel"
#undef TEXT_PIXELS
#define TEXT_PIXELS "Pixels read as one"
