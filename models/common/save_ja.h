// Save Settings, in Japanese.
#define TEXT_SAVE_CAPTION "設定の保存"
#define TEXT_SAVE_NAME "名前(&N)"
#define TEXT_SAVE_LIST "保存されている設定(&G)"
#define TEXT_SAVE_SAVE "保存(&S)"
#define TEXT_SAVE_DELETE "削除(&D)"
#define TEXT_SAVE_CANCEL "キャンセル"
