#include <CLI/CLI.hpp>
#include <memory>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ajustes.h"
#include "consola/LineasXml.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "consola/Uso.h"
#include "ficheros/Rutas.h"
#include "iso20022/Exportacion.h"
#include "iso20022/LectorXml.h"
#include "iso20022/Textos.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct PeticionXml {
  std::vector<std::string> ficheros;
  std::string salida;
  std::string version = "08";
  std::string direcciones = "necesarias";
  bool omitir = false;
  bool compacto = false;
  bool detalle = false;
  bool json = false;
  std::uint64_t cada = 0;
};

iso20022::OpcionesExportacion Opciones(const PeticionXml& peticion) {
  iso20022::OpcionesExportacion opciones;
  opciones.version = peticion.version == "02" ? iso20022::Version::V02 : iso20022::Version::V08;
  opciones.direcciones = peticion.direcciones == "todas"     ? iso20022::Direcciones::Todas
                         : peticion.direcciones == "ninguna" ? iso20022::Direcciones::Ninguna
                                                             : iso20022::Direcciones::Necesarias;
  opciones.omitir = peticion.omitir;
  opciones.compacto = peticion.compacto;
  opciones.detalle = peticion.detalle;
  opciones.cada = peticion.cada;
  opciones.bicDe = BicsDeAjustes();
  return opciones;
}

class OrdenDeXml {
 public:
  explicit OrdenDeXml(const PeticionXml& peticion) : peticion_(peticion), salida_(RutaDe(peticion.salida)) {}

  Salida hacer() {
    if (!tomar()) return Salida::Fallo;
    try {
      std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
      for (const Remesa& remesa : remesas_) {
        enCurso_ = remesa.ruta;
        if (remesa.lista)
          fuentes.push_back(std::make_unique<iso20022::FuenteLista>(*remesa.lista));
        else
          fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(remesa.ruta));
      }
      iso20022::Exportacion exportacion(std::move(fuentes), Opciones(peticion_));
      return examinar(exportacion) && sonOtros(exportacion.rutas(salida_)) && escribir(exportacion)
                 ? Salida::Hecho
                 : Salida::Fallo;
    } catch (const ficheros::ErrorEjecucion& error) {
      Avisar(Explicar(error, enCurso_));
      return Salida::Fallo;
    }
  }

 private:
  /// Todas, aunque alguna falle, para decir lo que les pasa a las demás.
  bool tomar() {
    bool todas = true;
    for (const fs::path& ruta : SinRepetir(peticion_.ficheros))
      todas = tomar(ruta) && todas;
    return todas;
  }

  bool tomar(const fs::path& ruta) {
    try {
      if (!iso20022::EmpiezaComoXml(ruta)) {
        remesas_.push_back({ruta, std::nullopt});
        return true;
      }
      auto mensaje = LeerMensajeXml(ruta);
      if (!mensaje) return false;
      if (peticion_.json || peticion_.detalle)
        for (const iso20022::AvisoLectura& aviso : mensaje->avisos)
          decir(ruta, aviso);
      else
        AvisarResumidos(ruta, mensaje->avisos);
      remesas_.push_back({ruta, std::move(mensaje->registros)});
      return true;
    } catch (const ficheros::ErrorEjecucion& error) {
      Avisar(Explicar(error, ruta));
      return false;
    }
  }

  template <class Nota>
  void decir(const fs::path& ruta, const Nota& nota) {
    if (peticion_.json)
      dicho_ = dicho_ && DecirLineas((EnLineaJson(comunes::DesdeRuta(ruta), nota) + u'\n').toStdString());
    else
      Avisar(EnLinea(comunes::DesdeRuta(ruta), nota));
  }

  bool examinar(iso20022::Exportacion& exportacion) {
    Avance avance(u"Examinando"_s, remesas_.front().ruta);
    const auto resumen =
        exportacion.examinar([this](iso20022::Nota&& nota) { decir(remesas_[nota.fuente].ruta, nota); },
                             [&](std::uintmax_t hecho, std::uintmax_t total) {
                               avance.poner(hecho, total);
                               return dicho_;
                             });
    if (!resumen || !dicho_) return false;
    resumen_ = *resumen;
    if (resumen_.posible) return true;
    const QString errores = principal::TextoCuenta(resumen_.errores, u"error"_s, u"errores"_s);
    const bool salvable = resumen_.salvable && !peticion_.omitir;
    Avisar(u"%1: no se ha escrito: %2%3"_s.arg(
        Mostrable(salida_), errores,
        salvable ? u" (con --omitir se escribe sin los adeudos que los tienen)"_s : QString()));
    return false;
  }

  /// Escribir un mensaje encima de una de las remesas la perdería.
  bool sonOtros(const std::vector<fs::path>& rutas) const {
    for (const fs::path& ruta : rutas)
      for (const Remesa& remesa : remesas_)
        if (ficheros::EsElMismo(ruta, remesa.ruta)) {
          Avisar(u"%1: el mensaje no puede escribirse sobre la remesa"_s.arg(Mostrable(ruta)));
          return false;
        }
    return true;
  }

  bool escribir(iso20022::Exportacion& exportacion) {
    enCurso_ = salida_;
    std::vector<Sustituido> sustituidos;
    std::vector<fs::path> rutas;
    {
      Avance avance(u"Escribiendo"_s, salida_);
      for (const fs::path& ruta : exportacion.rutas(salida_))
        sustituidos.emplace_back(ruta);
      rutas = exportacion.escribir(salida_, [&](std::uintmax_t hecho, std::uintmax_t total) {
        avance.poner(hecho, total);
        return true;
      });
    }
    for (const Sustituido& sustituido : sustituidos)
      sustituido.decir();
    if (const fs::path sobra = exportacion.sobrante(salida_); !sobra.empty())
      Avisar(u"%1: es de otra vez, y no de los mensajes que se acaban de escribir"_s.arg(Mostrable(sobra)));
    // Aunque no se pueda decir, están escritos.
    if (!peticion_.json) Decir(resumen(rutas));
    return true;
  }

  QString resumen(const std::vector<fs::path>& rutas) const {
    const auto numero = [](std::uint64_t n) { return comunes::FormatoNumero(static_cast<double>(n), 0); };
    QString texto = u"Mensajes: %1\nBloques: %2\nAdeudos: %3\nTotal: %4\n"_s.arg(
        numero(resumen_.mensajes), numero(resumen_.bloques), numero(resumen_.adeudos),
        principal::TextoEuros(static_cast<std::int64_t>(resumen_.importe)));
    if (resumen_.omitidos > 0)
      texto += u"Fuera, por tener errores: %1, %2\n"_s.arg(
          principal::TextoCuenta(resumen_.omitidos, u"adeudo"_s, u"adeudos"_s),
          principal::TextoEuros(static_cast<std::int64_t>(resumen_.importeOmitido)));
    for (const fs::path& ruta : rutas)
      texto += u"Escrito: %1\n"_s.arg(Mostrable(ruta));
    texto.chop(1);
    return texto;
  }

  const PeticionXml& peticion_;
  fs::path salida_;
  fs::path enCurso_;
  std::vector<Remesa> remesas_;
  iso20022::ResumenExportacion resumen_;
  bool dicho_ = true;
};

}  // namespace

void OrdenXml(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("xml", "Pasa una remesa a XML (pain.008)");
  auto peticion = std::make_shared<PeticionXml>();
  orden->add_option("FICHERO", peticion->ficheros, "Remesas, que van en un mensaje con el 01 de la primera")
      ->type_name("")
      ->required();
  orden->add_option("-o,--salida", peticion->salida, "Fichero que se escribe")
      ->type_name("SALIDA.xml")
      ->required()
      ->check([](const std::string& salida) { return salida.empty() ? "está vacía" : std::string(); }, "");
  const auto unaDe = [](std::initializer_list<const char*> admitidas) {
    return
        [palabras = std::vector<std::string>(admitidas.begin(), admitidas.end())](const std::string& dada) {
          if (std::find(palabras.begin(), palabras.end(), dada) != palabras.end()) return std::string();
          std::string texto = "ha de ser ";
          for (std::size_t i = 0; i < palabras.size(); ++i)
            texto += (i == 0 ? "" : i + 1 == palabras.size() ? " o " : ", ") + palabras[i];
          return texto;
        };
  };
  orden
      ->add_option("--version", peticion->version,
                   "La del mensaje: 08 (pain.008.001.08), que es la normal, o 02")
      ->type_name("VERSIÓN")
      ->check(unaDe({"08", "02"}), "");
  orden
      ->add_option("--direcciones", peticion->direcciones,
                   "Cuáles se escriben: necesarias (las de cuentas de fuera del EEE), todas o ninguna")
      ->type_name("CUÁLES")
      ->check(unaDe({"necesarias", "todas", "ninguna"}), "");
  orden->add_flag("--omitir", peticion->omitir, "Deja fuera los adeudos con error y escribe los demás");
  orden
      ->add_option("--cada", peticion->cada,
                   "A lo más N adeudos en cada mensaje: SALIDA-1.xml, SALIDA-2.xml…")
      ->type_name("N")
      ->check(NumeroDesdeUno(), "")
      ->transform(SinCerosDelante(), "");
  orden->add_flag("--compacto", peticion->compacto, "Sin líneas ni sangría");
  orden->add_flag("--detalle", peticion->detalle,
                  "Cada carácter cambiado y cada dirección que no se escribe");
  orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y nota en la salida, y nada más");
  orden->footer(
      "Lo que impide escribirlo, y lo que se cambia o se queda fuera, sale por la salida de errores.\n"
      "Sale con 0 si se escribió, aunque haya avisos, y con 1 si no, sin dejar nada escrito.");
  orden->callback([peticion, &accion] { accion = [peticion] { return OrdenDeXml(*peticion).hacer(); }; });
}

}  // namespace consola
