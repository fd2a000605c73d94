#include "remesa/Adeudos.h"

#include <vector>

#include "remesa/Campos.h"

namespace remesa {
namespace {

bool EsTipo03(std::string_view registro) {
  return Codigo(registro) == CodigoRegistro::Adeudo;
}

}  // namespace

std::size_t ContarDeudores(const ListaRegistros& lista) {
  std::size_t deudores = 0;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    if (EsTipo03(lista[i])) ++deudores;
  }
  return deudores;
}

bool EsDuplicable(std::string_view registro) {
  return LeerCampo(registro, kMarcaAdeudo) == "300" && LeerCampo(registro, kNumeroDato) == "003" &&
         EsTipo03(registro);
}

bool InsertarCopia(ListaRegistros& lista, std::size_t i) {
  if (i >= lista.size() || !EsDuplicable(lista[i])) return false;
  lista.duplicar(i);
  return true;
}

bool PuedeEliminar(const ListaRegistros& lista, std::span<const std::size_t> seleccion) {
  std::size_t siguiente = 0;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    if (siguiente < seleccion.size() && seleccion[siguiente] == i)
      ++siguiente;
    else if (EsTipo03(lista[i]))
      return true;
  }
  return false;
}

std::size_t EliminarAdeudos(ListaRegistros& lista, std::span<const std::size_t> seleccion) {
  std::vector<std::size_t> sobran;
  for (const std::size_t i : seleccion)
    if (i < lista.size() && EsTipo03(lista[i])) sobran.push_back(i);
  // Del último al primero y dejando siempre uno: si caen todos, el que se salva es el primero.
  if (!sobran.empty() && sobran.size() >= ContarDeudores(lista)) sobran.erase(sobran.begin());
  lista.quitar(sobran);
  return sobran.size();
}

}  // namespace remesa
