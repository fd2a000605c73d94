#include "iso20022/LectorXml.h"

#include <algorithm>

#include "ficheros/ErrorEjecucion.h"

namespace iso20022 {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kTrozoLectura = std::size_t{64} << 10;

/// El nombre sin el prefijo de su espacio.
QStringView SinPrefijo(QStringView nombre) {
  return nombre.sliced(nombre.lastIndexOf(u':') + 1);
}

}  // namespace

bool EmpiezaComoXml(const std::filesystem::path& ruta) {
  ficheros::LecturaFichero lectura(ruta);
  std::string principio(ConversorXml::kPrincipio, '\0');
  principio.resize(lectura.leer(principio));
  // En UTF-16, entre los ceros.
  constexpr std::string_view kMarcasYBlancos("\xEF\xBB\xBF\xFF\xFE \t\r\n\0", 10);
  const std::size_t primero = principio.find_first_not_of(kMarcasYBlancos);
  return primero != std::string::npos && principio[primero] == '<';
}

LectorXml::LectorXml(const std::filesystem::path& ruta) : ruta_(ruta), lectura_(ruta), bufer_(kTrozoLectura) {
  // Los prefijos sin declarar no estorban, y buscar entre miles de declaraciones no tendría fin.
  xml_.setNamespaceProcessing(false);
}

LectorXml::Suceso LectorXml::siguiente() {
  if (cerrado_) --profundidad_;
  cerrado_ = false;
  texto_.resize(0);
  for (;;) {
    switch (avanzar()) {
      case QXmlStreamReader::StartElement:
        ++profundidad_;
        nombre_ = SinPrefijo(xml_.qualifiedName());
        if (profundidad_ == 1) abrirRaiz();
        return Suceso::Abre;
      case QXmlStreamReader::EndElement:
        nombre_ = SinPrefijo(xml_.qualifiedName());
        cerrado_ = true;
        return Suceso::Cierra;
      case QXmlStreamReader::Characters:
        // La sangría que precede a todo lo demás no es de nadie.
        if (texto_.isEmpty() && xml_.isWhitespace()) break;
        texto_ += xml_.text();
        if (static_cast<std::size_t>(texto_.size()) > GuardaXml::kMaximo)
          fallar("tiene un texto demasiado largo");
        break;
      case QXmlStreamReader::EndDocument:
        return Suceso::Fin;
      default:
        break;
    }
  }
}

QXmlStreamReader::TokenType LectorXml::avanzar() {
  for (;;) {
    const auto clase = xml_.readNext();
    if (clase != QXmlStreamReader::Invalid) return clase;
    if (xml_.error() != QXmlStreamReader::PrematureEndOfDocumentError) fallar("no es un XML bien formado");
    if (leidoTodo_) fallar("acaba antes de tiempo");
    alimentar();
  }
}

void LectorXml::alimentar() try {
  QByteArray listos;
  while (listos.isEmpty() && !leidoTodo_) {
    const std::size_t leidos = lectura_.leer(bufer_);
    leidoTodo_ = leidos < bufer_.size();
    listos = guarda_.dar(convertir({bufer_.data(), leidos}));
    if (leidoTodo_) {
      conversor_->terminar();
      listos += guarda_.terminar();
    }
    leidos_ += leidos;
  }
  xml_.addData(listos);
} catch (const FalloXml& fallo) {
  throw ficheros::ErrorEjecucion(ficheros::kFormatoNoValido, ruta_, fallo.what());
}

QByteArray LectorXml::convertir(std::string_view bytes) {
  if (conversor_) return conversor_->convertir(bytes);
  conversor_.emplace(bytes.substr(0, ConversorXml::kPrincipio));
  QByteArray utf8 = conversor_->convertir(bytes.substr(conversor_->marca()));
  // La declaración ya está atendida, y diría de unos bytes en UTF-8 que no lo son. Quedan sus líneas.
  const std::size_t declaracion =
      LargoDeclaracion(std::string_view(utf8.data(), static_cast<std::size_t>(utf8.size()))
                           .substr(0, ConversorXml::kPrincipio));
  const QByteArray quitada = utf8.first(static_cast<qsizetype>(declaracion));
  utf8.replace(0, quitada.size(), QByteArray(quitada.count('\n'), '\n'));
  return utf8;
}

void LectorXml::abrirRaiz() {
  raiz_ = nombre_.toString();
  const QStringView completo = xml_.qualifiedName();
  const QStringView prefijo = completo.chopped(nombre_.size());  // con sus dos puntos
  const QString clave = prefijo.isEmpty() ? u"xmlns"_s : u"xmlns:%1"_s.arg(prefijo.chopped(1));
  espacio_ = xml_.attributes().value(clave).toString();
}

QString LectorXml::atributo(QStringView nombre) const {
  for (const QXmlStreamAttribute& atributo : xml_.attributes())
    if (SinPrefijo(atributo.qualifiedName()) == nombre) return atributo.value().toString();
  return {};
}

void LectorXml::fallar(const std::string& causa) const {
  throw ficheros::ErrorEjecucion(ficheros::kFormatoNoValido, ruta_, ConLinea(linea(), causa));
}

}  // namespace iso20022
