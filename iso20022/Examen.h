#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>

#include "iso20022/Exportacion.h"

namespace iso20022 {

/// El examen de una exportación: recorre los registros en orden, anota lo que encuentra y deja los grupos y
/// los apuntes de los adeudos que se pueden escribir.
class Exportacion::Examen {
 public:
  Examen(Exportacion& exportacion, const ReceptorNotas& recibir);

  /// false si `avance` lo detuvo.
  bool fuente(std::size_t cual, const Avance& avance);
  void terminar();

 private:
  bool linea(const Linea& linea);
  bool esAjena(std::string_view bytes) const;
  void mirarLargo(const Linea& linea);
  void mirarEsquema();
  void presentador();
  void cabecera();
  void abrirAdeudo(const Linea& linea);
  void opcional(remesa::ClaseRegistro clase);
  void anotarSuelto(CodigoNota codigo, remesa::Posiciones donde, std::string_view valor);
  void cerrarAdeudo();
  void apuntar();
  std::size_t grupo();
  void omitir();
  void anotarRemesa(CodigoNota codigo, std::uint64_t cuenta = 0, std::string valor = {},
                    std::string cambio = {});
  void resumir();
  std::uint64_t contarBloques() const;

  Exportacion& e_;
  ReceptorNotas recibir_;
  Traduccion traduccion_;
  RegistroLeido registro_;  // el que se mira
  AdeudoLeido adeudo_;      // el que se está leyendo
  Apunte apunte_;
  std::uint64_t numero_ = 0;               // líneas de la fuente
  std::uint64_t inicio_ = 0, ultima_ = 0;  // del adeudo
  std::size_t fuente_ = 0;
  bool ajena_ = false;
  bool hayAdeudo_ = false;
  bool adeudoMalo_ = false;      // por sus registros opcionales
  bool remesaMala_ = false;      // no se salva dejando adeudos fuera
  bool hayPresentador_ = false;  // en esta fuente
  bool hayCabecera_ = false;
  bool cabeceraMala_ = false;
  bool trasTotales_ = false;
  bool mezclados_ = false;
  std::size_t bloque_ = 0;
  std::string esquema_;  // la versión del primer registro que la lleva
  struct Cuenta {
    std::uint64_t cuantos = 0, primero = 0;
    void sumar(std::uint64_t numero) {
      if (cuantos++ == 0) primero = numero;
    }
  } lf_, trasTotalesCuenta_;
  std::map<std::string, std::size_t> bloques_;
  std::map<std::tuple<std::size_t, std::string, std::string>, std::size_t> grupos_;
  std::size_t ultimoGrupo_ = 0;
  std::set<std::string> acreedores_;
};

}  // namespace iso20022
