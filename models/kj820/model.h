// The KORVA KJ-820 Pro's name, for the dialogs of all models. Macros only.
#define MODEL_NAME "KORVA KJ-820 Pro"
