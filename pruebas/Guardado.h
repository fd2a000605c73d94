#pragma once

#include "Carpeta.h"
#include "Registros.h"
#include "ficheros/EscrituraConjunta.h"
#include "ficheros/EscrituraSegura.h"
#include "remesa/Guardado.h"

namespace pruebas {

using Nombres = std::vector<std::string>;

class Guardados : public Carpeta {
 protected:
  static void guardar(const std::filesystem::path& destino, std::string_view bytes) {
    ficheros::EscrituraSegura salida(destino);
    salida.escribir(bytes);
    salida.confirmar();
  }
};

}  // namespace pruebas
