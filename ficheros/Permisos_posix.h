#pragma once

#include <sys/stat.h>

#include <filesystem>

namespace ficheros {

/// Da al fichero abierto `fd`, recién creado solo para su dueño, los permisos, el dueño y la lista de control
/// que `estado` y `destino` dicen del fichero que va a sustituir. Lo que el sistema no deje dar queda sin
/// dar: nunca da a nadie más que a quien guarda lo que antes no tenía, ni lo que la carpeta reparta.
void HeredarPermisos(int fd, const struct stat& estado, const std::filesystem::path& destino);

}  // namespace ficheros
