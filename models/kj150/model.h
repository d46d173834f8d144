// The KORVA KJ-150's name, for the dialogs of all models. Macros only.
#define MODEL_NAME "KORVA KJ-150"
// The second MW option is always hidden, and so is its picture.
#define MODEL_WITHOUT_SUPER
