// Japanese texts of the dialog templates
#undef TEXT_CAMERA
#define TEXT_CAMERA "カメラ"
#undef TEXT_EXPOSURE
#define TEXT_EXPOSURE "露光時間"
#undef TEXT_BINNING
#define TEXT_BINNING "ビニング"
#undef TEXT_LIVE
#define TEXT_LIVE "ライブ画像"
#undef TEXT_SNAP
#define TEXT_SNAP "撮影"
#undef TEXT_TRANSMITTED
#define TEXT_TRANSMITTED "透過照明"
#undef TEXT_REFLECTED
#define TEXT_REFLECTED "落射照明"
#undef TEXT_LAMP_ON
#define TEXT_LAMP_ON "ランプ点灯"
#undef TEXT_LEVEL
#define TEXT_LEVEL "明るさ"
#undef TEXT_STAND
#define TEXT_STAND "スタンド"
#undef TEXT_TUBE
#define TEXT_TUBE "接眼レンズへ導光"
#undef TEXT_CONDENSER
#define TEXT_CONDENSER "コンデンサ"
#undef TEXT_CONDENSER_IN
#define TEXT_CONDENSER_IN "トップレンズ イン"
#undef TEXT_CONDENSER_TOP
#define TEXT_CONDENSER_TOP "トップレンズ アウト"
#undef TEXT_SERIES
#define TEXT_SERIES "タイムラプス"
#undef TEXT_SERIES_HEAD
#define TEXT_SERIES_HEAD "撮影計画"
#undef TEXT_SERIES_COUNT
#define TEXT_SERIES_COUNT "画像の枚数"
#undef TEXT_SERIES_INTERVAL
#define TEXT_SERIES_INTERVAL "間隔"
#undef TEXT_OK
#define TEXT_OK "OK"
#undef TEXT_CANCEL
#define TEXT_CANCEL "キャンセル"
#undef TEXT_PIXELS
#define TEXT_PIXELS "結合する画素"
