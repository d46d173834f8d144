// The KORVA KJ-150's name, for the dialogs of all models. Macros only.
#define MODEL_NAME "KORVA KJ-150"
// The second MW option is always hidden: no picture stands beside it.
#define MODEL_WITHOUT_SUPER
