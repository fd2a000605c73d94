#include "anteriores/Carpetas.h"

#include <algorithm>
#include <set>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Rutas.h"

namespace anteriores {
namespace {

namespace fs = std::filesystem;

constexpr int kProfundidad = 64;

class Recorrido {
 public:
  Recorrido(std::span<const fs::path> carpetas, const Seguir& seguir) : seguir_(seguir) {
    for (const fs::path& carpeta : carpetas) {
      std::error_code error;
      fs::path real = fs::canonical(carpeta, error);
      if (!error && fs::is_directory(real, error)) raices_.push_back(std::move(real));
    }
  }

  void raiz(const fs::path& carpeta) {
    std::error_code error;
    const fs::file_status estado = fs::status(carpeta, error);
    if (error)
      hallados_.carpetas.push_back({carpeta, ficheros::ErrorEjecucion(error, carpeta).texto()});
    else if (!fs::is_directory(estado))
      hallados_.carpetas.push_back({carpeta, "no es una carpeta"});
    else
      entrar(carpeta, 0);
  }

  Hallados terminar() {
    std::ranges::sort(hallados_.ficheros, {}, &FicheroHallado::ruta);
    return std::move(hallados_);
  }

 private:
  void entrar(const fs::path& carpeta, int nivel) {
    if (!esNueva(carpeta, nivel)) return;
    std::error_code error;
    fs::directory_iterator entrada(carpeta, error);
    for (; !error && entrada != fs::directory_iterator(); entrada.increment(error)) {
      if (!seguir_()) {
        hallados_.completo = false;
        return;
      }
      mirar(*entrada, nivel);
      if (!hallados_.completo) return;
    }
    if (!error) return;
    std::vector<Omitido>& donde = nivel == 0 ? hallados_.carpetas : hallados_.omitidos;
    donde.push_back({carpeta, ficheros::ErrorEjecucion(error, carpeta).texto()});
  }

  /// Una carpeta puede estar dos veces, dentro de otra de las pedidas o con otro nombre.
  bool esNueva(const fs::path& carpeta, int nivel) try {
    if (nivel > kProfundidad) {
      hallados_.omitidos.push_back({carpeta, "hay demasiadas carpetas unas dentro de otras"});
      return false;
    }
    const auto identidad = ficheros::IdentidadDe(carpeta);
    return !identidad || vistas_.insert(*identidad).second;
  } catch (const ficheros::ErrorEjecucion& fallo) {
    (nivel == 0 ? hallados_.carpetas : hallados_.omitidos).push_back({carpeta, fallo.texto()});
    return false;
  }

  void mirar(const fs::directory_entry& entrada, int nivel) {
    const fs::path& ruta = entrada.path();
    std::error_code error;
    const fs::file_status estado = entrada.symlink_status(error);
    if (!error && ficheros::EsEnlace(ruta)) {
      mirarEnlace(ruta);
    } else if (!error && fs::is_directory(estado)) {
      entrar(ruta, nivel + 1);
    } else if (!error && fs::is_regular_file(estado)) {
      FicheroHallado fichero{ruta};
      fichero.tamano = entrada.file_size(error);
      if (!error) fichero.escrito = ficheros::UltimaEscritura(ruta, error);
      if (!error) hallados_.ficheros.push_back(std::move(fichero));
    } else if (!error && fs::exists(estado)) {
      hallados_.omitidos.push_back({ruta, "no es un fichero corriente"});
    }
    // Lo que ha desaparecido mientras tanto no está.
    if (error && error != std::errc::no_such_file_or_directory)
      hallados_.omitidos.push_back({ruta, ficheros::ErrorEjecucion(error, ruta).texto()});
  }

  void mirarEnlace(const fs::path& enlace) {
    std::error_code error;
    const fs::path real = fs::canonical(enlace, error);
    const auto contiene = [&](const fs::path& raiz) {
      return std::ranges::mismatch(raiz, real).in1 == raiz.end();
    };
    if (error)
      hallados_.omitidos.push_back({enlace, "es un enlace que no lleva a ningún sitio"});
    else if (std::ranges::none_of(raices_, contiene))
      hallados_.omitidos.push_back({enlace, "es un enlace a otro sitio y no se sigue"});
  }

  const Seguir& seguir_;
  std::vector<fs::path> raices_;
  std::set<ficheros::Identidad> vistas_;
  Hallados hallados_;
};

}  // namespace

Hallados RecorrerCarpetas(std::span<const fs::path> carpetas, const Seguir& seguir) {
  Recorrido recorrido(carpetas, seguir);
  for (const fs::path& carpeta : carpetas)
    recorrido.raiz(carpeta);
  return recorrido.terminar();
}

}  // namespace anteriores
