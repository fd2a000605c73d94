#pragma once

#include <QString>
#include <optional>

#include "devoluciones/Lote.h"

namespace devoluciones {

/// Recibe un mensaje XML por dentro. Las rutas van desde el elemento del mensaje, sin él y sin prefijos, con
/// "/"; de una versión a otra hay elementos que envuelven a los mismos, y esos se saltan.
class LectorMensaje {
 public:
  LectorMensaje() = default;
  LectorMensaje(const LectorMensaje&) = delete;
  LectorMensaje& operator=(const LectorMensaje&) = delete;
  virtual ~LectorMensaje() = default;

  virtual void abre(QStringView ruta, std::uint64_t linea) = 0;
  /// El valor de un elemento sin otros dentro, sin blancos a los lados; `moneda`, la que diga, o vacía.
  virtual void valor(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea) = 0;
  virtual void cierra(QStringView ruta, std::uint64_t linea) = 0;
  /// El mensaje ha acabado entero.
  virtual void terminar() = 0;
};

std::unique_ptr<LectorMensaje> LectorPain002(Lote& lote);
std::unique_ptr<LectorMensaje> LectorCamt054(Lote& lote);

/// Un campo de texto de la devolución y dónde está en el mensaje.
struct CampoXml {
  QStringView ruta;
  Dato Devolucion::*dato;
};

/// Pone el valor en su campo, si la ruta es de alguno y aún no tiene. Las referencias que dicen que no las
/// hay van en blanco.
bool PonerCampo(Lote& lote, Devolucion& devolucion, std::span<const CampoXml> campos, QStringView ruta,
                const QString& texto);

/// Céntimos de un importe en euros. Si no se entiende o es de otra moneda, sin valor y con su aviso.
std::optional<std::int64_t> LeerImporte(Lote& lote, const QString& texto, const QString& moneda,
                                        std::uint64_t linea);
/// Céntimos exactos de un decimal con punto; sin valor si no lo es o tiene fracciones de céntimo.
std::optional<std::int64_t> LeerCentimos(QStringView texto);
std::optional<std::int64_t> LeerCuenta(QStringView texto);
/// AAAA-MM-DD, quizá con la hora detrás.
std::optional<remesa::Dia> LeerDia(QStringView texto);

/// El motivo y lo que el banco añade, que pueden venir en varios elementos.
struct MotivoXml {
  QString codigo, texto;
  void anadirTexto(const QString& otro);
  void poner(Lote& lote, Devolucion& devolucion) const;
};

}  // namespace devoluciones
