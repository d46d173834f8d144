// Spanish, for Mexico: there a PC is feminine.
#include "resources/texts/es.h"

#undef TEXT_INSTALL_1
#define TEXT_INSTALL_1 "No hay archivos del controlador en su PC. Si instaló este controlador de\n"
#undef TEXT_INSTALL_2
#define TEXT_INSTALL_2 "impresora desde el menú ""Conectar a impresora..."", no se copiaron todos\n"
#undef TEXT_INSTALL_3
#define TEXT_INSTALL_3 "los archivos necesarios de la PC que es el servidor de impresión.\n"
#undef TEXT_INSTALL_4
#define TEXT_INSTALL_4 "Reinstale el controlador de impresora con el disco de instalación.\n"
#undef TEXT_INSTALL_5
#define TEXT_INSTALL_5 "Así se copiarán a su PC los archivos necesarios.\n"
#undef TEXT_VERSION_1
#define TEXT_VERSION_1 "Este controlador de impresora es solo para Windows NT(R) versión 3.51.\n"
#undef TEXT_VERSION_2
#define TEXT_VERSION_2 "El controlador no puede ejecutarse en la versión de\n"
#undef TEXT_VERSION_3
#define TEXT_VERSION_3 "Windows NT(R) que está instalada.\n"
