// About, in English.
#define TEXT_ABOUT_CAPTION "About the Printer Driver"
#define TEXT_ABOUT_KIND "Ink Jet Printer Driver"
#define TEXT_ABOUT_VERSION "Version 1.0"
#define TEXT_ABOUT_MAKER "KORVA is a made-up maker. Its printers are samples of what the driver can do."
#define TEXT_ABOUT_CLOSE "&Close"
