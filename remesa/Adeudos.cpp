#include "remesa/Adeudos.h"

#include <vector>

#include "remesa/Campos.h"

namespace remesa {
namespace {

bool EsTipo03(std::string_view registro) {
  return Codigo(registro) == CodigoRegistro::Adeudo;
}

bool EsOpcional(std::string_view registro) {
  return EsTipo03(registro) && Clase(registro) != ClaseRegistro::Adeudo;
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
  lista.duplicar(i, i + 1);
  return true;
}

std::optional<std::size_t> InsertarCopiaTrasAdeudo(ListaRegistros& lista, std::size_t i) {
  if (i >= lista.size() || !EsDuplicable(lista[i])) return std::nullopt;
  std::size_t donde = i + 1;
  while (donde < lista.size() && EsOpcional(lista[donde]))
    ++donde;
  lista.duplicar(i, donde);
  return donde;
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

std::vector<std::size_t> ConSusOpcionales(const ListaRegistros& lista,
                                          std::span<const std::size_t> seleccion) {
  std::vector<std::size_t> conTodo;
  std::size_t siguiente = 0;
  for (const std::size_t i : seleccion) {
    if (i < siguiente || i >= lista.size() || !EsTipo03(lista[i])) continue;
    conTodo.push_back(i);
    siguiente = i + 1;
    if (EsOpcional(lista[i])) continue;
    for (; siguiente < lista.size() && EsOpcional(lista[siguiente]); ++siguiente)
      conTodo.push_back(siguiente);
  }
  return conTodo;
}

}  // namespace remesa
