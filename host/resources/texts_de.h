// German texts of the dialog templates
#undef TEXT_CAMERA
#define TEXT_CAMERA "Kamera"
#undef TEXT_EXPOSURE
#define TEXT_EXPOSURE "Belichtungszeit"
#undef TEXT_BINNING
#define TEXT_BINNING "Binning"
#undef TEXT_LIVE
#define TEXT_LIVE "Livebild"
#undef TEXT_SNAP
#define TEXT_SNAP "Aufnehmen"
#undef TEXT_TRANSMITTED
#define TEXT_TRANSMITTED "Durchlicht"
#undef TEXT_REFLECTED
#define TEXT_REFLECTED "Auflicht"
#undef TEXT_LAMP_ON
#define TEXT_LAMP_ON "Lampe ein"
#undef TEXT_LEVEL
#define TEXT_LEVEL "Helligkeit"
#undef TEXT_STAND
#define TEXT_STAND "Stativ"
#undef TEXT_TUBE
#define TEXT_TUBE "Licht zu den Okularen"
#undef TEXT_CONDENSER
#define TEXT_CONDENSER "Kondensor"
#undef TEXT_CONDENSER_IN
#define TEXT_CONDENSER_IN "Frontlinse eingeschwenkt"
#undef TEXT_CONDENSER_TOP
#define TEXT_CONDENSER_TOP "Frontlinse ausgeschwenkt"
#undef TEXT_SERIES
#define TEXT_SERIES "Zeitserie"
#undef TEXT_SERIES_HEAD
#define TEXT_SERIES_HEAD "Geplante Serie"
#undef TEXT_SERIES_COUNT
#define TEXT_SERIES_COUNT "Anzahl der Bilder"
#undef TEXT_SERIES_INTERVAL
#define TEXT_SERIES_INTERVAL "Intervall"
#undef TEXT_OK
#define TEXT_OK "OK"
#undef TEXT_CANCEL
#define TEXT_CANCEL "Abbrechen"
#undef TEXT_PIXELS
#define TEXT_PIXELS "Zusammengefasste Pixel"
