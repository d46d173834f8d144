// About, in Japanese.
#define TEXT_ABOUT_CAPTION "プリンタードライバーについて"
#define TEXT_ABOUT_KIND "インクジェットプリンタードライバー"
#define TEXT_ABOUT_VERSION "バージョン 1.0"
#define TEXT_ABOUT_MAKER "KORVA は架空のメーカーです。プリンターはドライバーの機能を示す見本です。"
#define TEXT_ABOUT_CLOSE "閉じる(&C)"
