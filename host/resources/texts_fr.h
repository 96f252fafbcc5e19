// French texts of the dialog templates
#undef TEXT_CAMERA
#define TEXT_CAMERA "Caméra"
#undef TEXT_EXPOSURE
#define TEXT_EXPOSURE "Temps de pose"
#undef TEXT_BINNING
#define TEXT_BINNING "Regroupement"
#undef TEXT_LIVE
#define TEXT_LIVE "Image en direct"
#undef TEXT_SNAP
#define TEXT_SNAP "Capturer"
#undef TEXT_TRANSMITTED
#define TEXT_TRANSMITTED "Lumière transmise"
#undef TEXT_REFLECTED
#define TEXT_REFLECTED "Lumière réfléchie"
#undef TEXT_LAMP_ON
#define TEXT_LAMP_ON "Lampe allumée"
#undef TEXT_LEVEL
#define TEXT_LEVEL "Intensité"
#undef TEXT_STAND
#define TEXT_STAND "Statif"
#undef TEXT_TUBE
#define TEXT_TUBE "Lumière vers les oculaires"
#undef TEXT_CONDENSER
#define TEXT_CONDENSER "Condenseur"
#undef TEXT_CONDENSER_IN
#define TEXT_CONDENSER_IN "Lentille frontale en place"
#undef TEXT_CONDENSER_TOP
#define TEXT_CONDENSER_TOP "Lentille frontale retirée"
#undef TEXT_SERIES
#define TEXT_SERIES "Série temporelle"
#undef TEXT_SERIES_HEAD
#define TEXT_SERIES_HEAD "Série prévue"
#undef TEXT_SERIES_COUNT
#define TEXT_SERIES_COUNT "Nombre d'images"
#undef TEXT_SERIES_INTERVAL
#define TEXT_SERIES_INTERVAL "Intervalle"
#undef TEXT_OK
#define TEXT_OK "OK"
#undef TEXT_CANCEL
#define TEXT_CANCEL "Annuler"
#undef TEXT_PIXELS
#define TEXT_PIXELS "Pixels regroupés"
