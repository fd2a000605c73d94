#include <CLI/CLI.hpp>
#include <QJsonDocument>
#include <QJsonObject>
#include <memory>
#include <optional>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "remesa/Comprobacion.h"
#include "ventanas/principal/TextosComprobacion.h"

namespace consola {

namespace {

struct PeticionComprobar {
  std::vector<std::string> ficheros;
  bool json = false;
  std::string fecha;
};

remesa::Dia Hoy(const std::string& fecha) {
  if (const auto dada = remesa::LeerFecha(fecha)) return *dada;
  return comunes::Hoy();
}

QString EnJson(const remesa::Hallazgo& h, const QString& fichero) {
  const QString codigo = QString::fromUtf8(remesa::TextoCodigo(h.codigo).data());
  const QJsonObject objeto{{"fichero", fichero},
                           {"nivel", principal::TextoNivel(h.codigo)},
                           {"codigo", codigo},
                           {"registro", static_cast<qint64>(h.registro)},
                           {"desde", h.donde.desde},
                           {"hasta", h.donde.hasta},
                           {"campo", principal::TextoCampo(h)},
                           {"deudor", comunes::DesdeWindows1252(h.deudor)},
                           {"referencia", comunes::DesdeWindows1252(h.referencia)},
                           {"valor", principal::TextoValor(h)},
                           {"esperado", principal::TextoEsperado(h)},
                           {"mensaje", principal::TextoHallazgo(h)}};
  return QString::fromUtf8(QJsonDocument(objeto).toJson(QJsonDocument::Compact));
}

/// "fichero: registro 3, 89-99 Importe del adeudo (Ana Peña, REF1): error E304: …"
QString EnLinea(const remesa::Hallazgo& h, const QString& fichero) {
  QString lugar;
  if (h.registro > 0) lugar += QStringLiteral(" registro %1").arg(h.registro);
  if (h.donde.desde > 0) lugar += QStringLiteral(", %1-%2").arg(h.donde.desde).arg(h.donde.hasta);
  if (h.campo != nullptr) lugar += QLatin1Char(' ') + principal::TextoCampo(h);
  QStringList quien;
  for (const std::string* dato : {&h.deudor, &h.referencia})
    if (!dato->empty()) quien += comunes::DesdeWindows1252(*dato);
  if (!quien.isEmpty()) lugar += QStringLiteral(" (%1)").arg(quien.join(QStringLiteral(", ")));
  if (!lugar.isEmpty()) lugar += QLatin1Char(':');
  const QString codigo = QString::fromUtf8(remesa::TextoCodigo(h.codigo).data());
  const QString esperado = principal::TextoEsperado(h);
  return Mostrable(QStringLiteral("%1:").arg(fichero) + lugar +
                   QStringLiteral(" %1 %2: ").arg(principal::TextoNivel(h.codigo), codigo) +
                   principal::TextoHallazgo(h) + QStringLiteral(" Se esperaba: ") + esperado +
                   QLatin1Char('.'));
}

/// Las líneas que se dicen, de muchas en muchas: escribirlas una a una cuesta más que hallarlas.
class Lineas {
 public:
  void dar(const QString& linea) {
    if (!texto_.isEmpty()) texto_ += QLatin1Char('\n');
    texto_ += linea;
    if (texto_.size() >= kTrozo) vaciar();
  }
  /// false si ya no se pueden escribir; entonces no se intenta más.
  bool vaciar() {
    if (!texto_.isEmpty()) escrito_ = escrito_ && Decir(texto_);
    texto_.resize(0);
    return escrito_;
  }
  bool escrito() const { return escrito_; }

 private:
  static constexpr qsizetype kTrozo = 1 << 16;
  QString texto_;
  bool escrito_ = true;
};

Salida Comprobar(const PeticionComprobar& peticion) {
  const remesa::Dia hoy = Hoy(peticion.fecha);
  Salida salida = Salida::Hecho;
  for (const std::string& nombre : peticion.ficheros) {
    const std::filesystem::path ruta = RutaDe(nombre);
    const QString fichero = comunes::DesdeRuta(ruta);
    Lineas lineas;
    try {
      Avance avance(QStringLiteral("Comprobando"), ruta);
      const auto resultado = remesa::ComprobarFichero(
          ruta, hoy,
          [&](remesa::Hallazgo&& h) { lineas.dar(peticion.json ? EnJson(h, fichero) : EnLinea(h, fichero)); },
          [&](std::uintmax_t leidos, std::uintmax_t total) {
            avance.poner(leidos, total);
            return lineas.escrito();
          });
      if (resultado.errores > 0) salida = Salida::Fallo;
      if (!peticion.json)
        lineas.dar(QStringLiteral("%1: %2").arg(
            Mostrable(ruta), principal::TextoRecuento(resultado.errores, resultado.avisos)));
      if (!lineas.vaciar()) return Salida::Fallo;
    } catch (const remesa::ErrorEjecucion& error) {
      lineas.vaciar();
      Avisar(Explicar(error, ruta));
      salida = Salida::Fallo;
    }
  }
  return salida;
}

}  // namespace

void OrdenComprobar(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("comprobar", "Busca en una remesa lo que no cumple la norma");
  auto peticion = std::make_shared<PeticionComprobar>();
  orden->add_option("FICHERO", peticion->ficheros, "Remesas que se comprueban")->type_name("")->required();
  orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y hallazgo, y nada más");
  orden->add_option("--fecha", peticion->fecha, "El día que se toma por hoy (AAAAMMDD)")
      ->type_name("FECHA")
      ->check(
          [](const std::string& fecha) {
            return remesa::LeerFecha(fecha) ? std::string() : "ha de ser un día que exista, AAAAMMDD";
          },
          "");
  orden->footer("No cambia ningún fichero. Sale con 1 si hay errores y con 0 si solo hay avisos.");
  orden->callback([peticion, &accion] { accion = [peticion] { return Comprobar(*peticion); }; });
}

}  // namespace consola
