#include "comunes/plataforma/IniFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Codificacion.h"
#include "comunes/plataforma/Texto.h"

namespace comunes {

using namespace Qt::StringLiterals;

QString RutaAjustes;

namespace {

constexpr std::size_t kLongitudMaxima = 2047;
/// El que viene con el programa no llega a 20 KB: uno mayor que esto no es de ajustes, y leerlo pararía la
/// ventana.
constexpr qint64 kTamanoMaximo = qint64{4} << 20;
constexpr std::string_view kBlancos = " \t\v\f";

/// Sin distinguir mayúsculas en toda la página 1252, las letras con acento incluidas.
std::string plegar(std::string_view bytes) {
  static const std::array<char, 256> tabla = [] {
    std::array<char, 256> t{};
    for (std::size_t i = 0; i < t.size(); ++i) {
      const char c = static_cast<char>(i);
      const QString minuscula = DesdeWindows1252({&c, 1}).toLower();
      t[i] = CabeEnWindows1252(minuscula) ? AWindows1252(minuscula)[0] : c;
    }
    return t;
  }();
  std::string plegado(bytes);
  for (char& c : plegado)
    c = tabla[static_cast<unsigned char>(c)];
  return plegado;
}

/// Sin blancos alrededor y hasta el primer NUL, que para la plataforma acaba el texto.
std::string_view recortar(std::string_view texto) {
  texto = texto.substr(0, texto.find('\0'));
  const auto desde = texto.find_first_not_of(kBlancos);
  if (desde == std::string_view::npos) return {};
  return texto.substr(desde, texto.find_last_not_of(kBlancos) - desde + 1);
}

std::string_view sinComillas(std::string_view valor) {
  const bool rodeado =
      valor.size() >= 2 && valor.front() == valor.back() && (valor.front() == '"' || valor.front() == '\'');
  return rodeado ? valor.substr(1, valor.size() - 2) : valor;
}

/// El nombre entre el primer corchete y el último si `linea` abre una sección; sin el de cierre no la abre.
std::optional<std::string_view> nombreSeccion(std::string_view linea) {
  linea.remove_prefix(std::min(linea.find_first_not_of(kBlancos), linea.size()));
  if (!linea.starts_with('[')) return std::nullopt;
  const auto cierre = linea.rfind(']');
  if (cierre == std::string_view::npos) return std::nullopt;
  return recortar(linea.substr(1, cierre - 1));
}

/// Fichero leído, en Windows-1252, y dónde empieza cada sección (la línea que sigue a sus corchetes).
class Perfil {
 public:
  explicit Perfil(std::string bytes) : bytes_(std::move(bytes)) {
    // Las claves anteriores a toda sección son de la que no tiene nombre.
    secciones_.try_emplace(std::string(), 0);
    for (std::size_t pos = 0; pos < bytes_.size();)
      if (const auto nombre = nombreSeccion(linea(pos))) secciones_.try_emplace(plegar(*nombre), pos);
  }

  /// Sin valor si la clave no está.
  std::optional<std::string_view> valor(const std::string& seccion, const std::string& clave) const {
    const auto hallada = secciones_.find(plegar(recortar(seccion)));
    if (hallada == secciones_.end()) return std::nullopt;
    const std::string buscada = plegar(recortar(clave));
    for (std::size_t pos = hallada->second; pos < bytes_.size();) {
      const std::string_view actual = linea(pos);
      if (nombreSeccion(actual)) break;
      const auto igual = actual.find('=');
      const std::string_view nombre = recortar(actual.substr(0, igual));
      if (nombre.starts_with(';') || plegar(nombre) != buscada) continue;
      // Una línea sin "=" es una clave sin valor, que tapa a las que la siguen; una en blanco no es nada.
      if (igual != std::string_view::npos)
        return sinComillas(recortar(actual.substr(igual + 1))).substr(0, kLongitudMaxima);
      if (!nombre.empty()) return std::string_view();
    }
    return std::nullopt;
  }

 private:
  /// La línea que empieza en `pos`; deja `pos` al principio de la siguiente.
  std::string_view linea(std::size_t& pos) const {
    const std::string_view todo = bytes_;
    const std::size_t desde = pos;
    const auto* salto =
        std::find_if(todo.begin() + pos, todo.end(), [](char c) { return c == '\r' || c == '\n'; });
    const auto fin = static_cast<std::size_t>(salto - todo.begin());
    pos = fin + 1;
    return todo.substr(desde, fin - desde);
  }

  std::string bytes_;
  std::unordered_map<std::string, std::size_t> secciones_;
};

std::string leerBytes(const QString& ruta) {
  QFile fichero(ruta);
  if (!fichero.open(QIODevice::ReadOnly)) return {};
  const QByteArray bytes = fichero.readAll();
  // Con marca, lo que diga, aunque haya algo que no se pueda leer: lo demás se entiende.
  if (const auto codificacion = QStringConverter::encodingForData(bytes))
    return AWindows1252(QStringDecoder(*codificacion)(bytes));
  const TextoLeido leido = LeerTexto(bytes);
  return leido.codificacion.unicode ? AWindows1252(leido.texto) : bytes.toStdString();
}

/// El último fichero leído se guarda: el editor pide unas sesenta claves del mismo por cada registro.
const Perfil& perfilDe(const QFileInfo& datos) {
  static QString ruta;
  static QDateTime fecha;
  static qint64 longitud = -1;
  static Perfil perfil{std::string()};
  // Un fichero recién escrito puede cambiar otra vez sin que su fecha lo diga.
  constexpr qint64 kReposoMs = 3000;
  const bool reciente = datos.lastModified().msecsTo(QDateTime::currentDateTime()) < kReposoMs;
  if (reciente || ruta != datos.absoluteFilePath() || fecha != datos.lastModified() ||
      longitud != datos.size()) {
    perfil = Perfil(leerBytes(datos.absoluteFilePath()));
    ruta = datos.absoluteFilePath();
    fecha = datos.lastModified();
    longitud = datos.size();
  }
  return perfil;
}

/// Una sola vez por fichero.
void avisarGrande(const QString& ruta) {
  static QString avisado;
  if (avisado == ruta) return;
  avisado = ruta;
  AvisarPlataforma(GradoAviso::Exclamacion,
                   u"%1: no se ha leído porque pasa de 4 MB: no es un fichero de ajustes."_s.arg(ruta),
                   QCoreApplication::applicationName());
}

/// El perfil de un fichero de ajustes; nulo si no lo hay o no lo es.
const Perfil* buscarPerfil(const QString& fichero) {
  const QFileInfo datos(fichero);
  // Abrir una tubería o un dispositivo podría no volver nunca.
  if (!datos.isFile()) return nullptr;
  if (datos.size() <= kTamanoMaximo) return &perfilDe(datos);
  avisarGrande(datos.absoluteFilePath());
  return nullptr;
}

}  // namespace

QString ReadINI(const QString& Fichero, const QString& Seccion, const QString& Clave,
                const QString& Defecto) {
  if (Fichero.isEmpty()) {
    AvisarPlataforma(GradoAviso::SinIcono, u"ReadINI no recibió nombre de fichero a leer"_s,
                     QCoreApplication::applicationName());
    return Defecto;
  }
  const Perfil* perfil = buscarPerfil(Fichero);
  if (perfil == nullptr) return Defecto;
  const std::string_view valor = perfil->valor(AWindows1252(Seccion), AWindows1252(Clave)).value_or("");
  return valor.empty() ? Defecto : DesdeWindows1252(valor);
}

bool EstaEnINI(const QString& Fichero, const QString& Seccion, const QString& Clave) {
  const Perfil* perfil = buscarPerfil(Fichero);
  return perfil != nullptr && perfil->valor(AWindows1252(Seccion), AWindows1252(Clave)).has_value();
}

}  // namespace comunes
