#pragma once

namespace comunes {

/// true donde el diálogo de ficheros del sistema habla el idioma del usuario (Windows); en los demás se usa
/// el del toolkit, que va en español.
bool DialogoDelSistema();

}  // namespace comunes
