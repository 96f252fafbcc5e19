// Spanish texts of the dialog templates
#undef TEXT_CAMERA
#define TEXT_CAMERA "Cámara"
#undef TEXT_EXPOSURE
#define TEXT_EXPOSURE "Exposición"
#undef TEXT_BINNING
#define TEXT_BINNING "Agrupación"
#undef TEXT_LIVE
#define TEXT_LIVE "Imagen en vivo"
#undef TEXT_SNAP
#define TEXT_SNAP "Capturar"
#undef TEXT_TRANSMITTED
#define TEXT_TRANSMITTED "Luz transmitida"
#undef TEXT_REFLECTED
#define TEXT_REFLECTED "Luz reflejada"
#undef TEXT_LAMP_ON
#define TEXT_LAMP_ON "Lámpara encendida"
#undef TEXT_LEVEL
#define TEXT_LEVEL "Intensidad"
#undef TEXT_STAND
#define TEXT_STAND "Estativo"
#undef TEXT_TUBE
#define TEXT_TUBE "Luz a los oculares"
#undef TEXT_CONDENSER
#define TEXT_CONDENSER "Condensador"
#undef TEXT_CONDENSER_IN
#define TEXT_CONDENSER_IN "Lente frontal dentro"
#undef TEXT_CONDENSER_TOP
#define TEXT_CONDENSER_TOP "Lente frontal fuera"
#undef TEXT_SERIES
#define TEXT_SERIES "Serie temporal"
#undef TEXT_SERIES_HEAD
#define TEXT_SERIES_HEAD "Serie prevista"
#undef TEXT_SERIES_COUNT
#define TEXT_SERIES_COUNT "Número de imágenes"
#undef TEXT_SERIES_INTERVAL
#define TEXT_SERIES_INTERVAL "Intervalo"
#undef TEXT_OK
#define TEXT_OK "Aceptar"
#undef TEXT_CANCEL
#define TEXT_CANCEL "Cancelar"
#undef TEXT_PIXELS
#define TEXT_PIXELS "Píxeles agrupados"
