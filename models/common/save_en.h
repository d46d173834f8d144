// Save Settings, in English.
#define TEXT_SAVE_CAPTION "Save Settings"
#define TEXT_SAVE_NAME "&Name"
#define TEXT_SAVE_LIST "Saved Settin&gs"
#define TEXT_SAVE_SAVE "&Save"
#define TEXT_SAVE_DELETE "&Delete"
#define TEXT_SAVE_CANCEL "Cancel"
