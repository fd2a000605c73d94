#include "comunes/plataforma/IniFiles.h"

#include <QCoreApplication>

#include "comunes/plataforma/Aviso.h"
#include "pruebas/EnCarpeta.h"

using namespace comunes;
using namespace std::string_literals;

namespace {

using namespace Qt::StringLiterals;

class IniFiles : public pruebas::EnCarpeta {
 protected:
  QString ini(const std::string& bytes) { return escribir("a.INI", QByteArray::fromStdString(bytes)); }
};

/// Fichero y lecturas: "sección|clave|valor" separadas por "~".
struct Caso {
  std::string fichero;
  const char* lecturas;
};

// Resultados de la llamada de la plataforma; "-" es el valor por defecto.
const std::vector<Caso> kCasos{
    {"[S]\r\nk=v\r\nK=w\r\nvacia=\r\n  esp  =  a b  \r\n[s]\r\nk=otra\r\nsolo2=x\r\n[T]\r\nk=t\r\n",
     "S|k|v~s|K|v~S|vacia|-~S|esp|a b~S|solo2|-~T|k|t~S|nada|-~U|k|-~ S | k |v"},
    {"[S]\na=\"x y\"\nb='x y'\nc=\"x\nd=x\"\ne=\"x'\nf=\"\"x\"\"\ng=\"\nh=\"\"\ni=  \" x \"  \nj=\"a\" "
     "\"b\"\nk=\"a\" ; c\n",
     "S|a|x y~S|b|x y~S|c|\"x~S|d|x\"~S|e|\"x'~S|f|\"x\"~S|g|\"~S|h|-~S|i| x ~S|j|a\" \"b~S|k|\"a\" ; c"},
    {"; c\n[S] ; cola\n;a=1\n ;b=2\nc=3;x\nd=4 ;x\n#e=5\nf;=6\n;[T]\ng=7\n",
     "S|a|-~S|b|-~S|c|3;x~S|d|4 ;x~S|#e|5~S|f;|6~S|g|7~T|g|-"},
    {"[ S ]\na=1\n[T\na=2\n[T=5\nb=9\n  [U]\na=3\n[V]x\na=4\n[W]a=5\n[X]]\na=6\n[Y][Z]\na=8\nx[R]\na=9\n[ e "
     "s ]\na=10\n",
     "S|a|1~T|a|-~S|[T|-~S|b|9~U|a|3~V|a|4~W|a|-~X|a|-~X]|a|6~Y|a|-~Y][Z|a|8~R|a|-~e s|a|10"},
    {"a=1\n[S]\na=2\n[]\nb=3\n", "|a|1~S|a|2~|b|-"},
    {"[S]\ra=1\r\r\nb=2\n\n\r[T]\rc=3", "S|a|1~S|b|2~T|c|3"},
    {"[S]\na=1\x0b"s + "b\x0c\nc=2\x1a"s + "d\n\x1a\nf=4\ng=\x0b\t7\x0b\nh=\x85x\xa0\nd\xa0=5\n",
     "S|a|1\x0b"
     "b~S|c|2\x1a"
     "d~S|f|4~S|g|7~S|h|…x\u00a0~S|d|-"},
    {"[S]\na=1\0002\nb=3\n\0c=4\nd\0=5\ng\0h=8\n[T\0x]\nb=6\n\0[U]\na=7\n"s,
     "S|a|1~S|b|3~S|c|-~S|d|5~S|g|8~S|h|-~T|b|6~U|a|-"},
    {"[S]\nsola\n=v\n a = b = c \nb = = x\nsola=z\nc:1\nd=x\\\ne=1",
     "S|sola|-~S||v~S|a|b = c~S|b|= x~S|c|-~S|d|x\\~S|e|1"},
    {"[S]\na=\na=2\nb=1\nb=\n[S]\nc=3\n", "S|a|-~S|b|1~S|c|-"},
    // Aquí va más lejos que ella, que según el sistema solo pliega las letras sin acento.
    {"[A\xf1o]\n\xd1u=\x80\n", "AÑO|ñU|€~ANO|ñu|-"},
    {"\xef\xbb\xbf[Año]\nñ=Ñandú€\n", "Año|ñ|Ñandú€"},
    // UTF-8 sin marca, si no puede ser otra cosa: con un solo byte suelto, es la página de códigos.
    {"[S]\nñ=Ñ€\n", "S|ñ|Ñ€~S|Ã±|-"},
    {"[S]\nñ=Ñ\nb=\xd1\n", "S|ñ|-~S|Ã±|Ã‘~S|b|Ñ"},
    {"\xff\xfe[\0S\0]\0\r\0\n\0a\0=\0\xac\x20"s, "S|a|€"},
    {"", "S|a|-"}};

}  // namespace

TEST_F(IniFiles, LeeComoLaPlataforma) {
  for (const Caso& caso : kCasos) {
    const QString fichero = ini(caso.fichero);
    for (const QString& lectura : QString::fromUtf8(caso.lecturas).split(u'~')) {
      const QStringList l = lectura.split(u'|');
      EXPECT_EQ(ReadINI(fichero, l[0], l[1], "-").toStdString(), l[2].toStdString()) << caso.fichero << '\n'
                                                                                     << lectura.toStdString();
    }
  }
}

TEST_F(IniFiles, CortaEnDosMilCuarentaYSieteBytes) {
  const QString fichero = ini("[S]\na=" + std::string(5000, 'x') + "\nb=\"" + std::string(2060, 'y') +
                              "\"\n" + std::string(3000, 'k') + "=3\nc=" + std::string(3000, ' ') + "fin\n");
  const auto leer = [&](const char* clave) { return ReadINI(fichero, "S", QString::fromLatin1(clave), {}); };
  EXPECT_EQ(leer("a"), QString(2047, u'x'));
  EXPECT_EQ(leer("b"), QString(2047, u'y'));
  EXPECT_EQ(leer("c"), u"fin"_s);
}

TEST_F(IniFiles, VeElFicheroRecienCambiadoYSinElDaElDefecto) {
  EXPECT_EQ(ReadINI(ini("[S]\na=1\n"), "S", "a", "-"), "1");
  EXPECT_EQ(ReadINI(ini("[S]\na=2\n"), "S", "a", "-"), "2");
  for (const QString& nada : {ruta("no.INI"), carpeta_.path()})
    EXPECT_EQ(ReadINI(nada, "S", "a", "-"), "-");
}

TEST_F(IniFiles, SinNombreAvisaYDaElDefecto) {
  QStringList avisos;
  const Avisador anterior = PonerAvisador(
      [&](GradoAviso, const QString& texto, const QString& titulo) { avisos << texto << titulo; });
  EXPECT_EQ(ReadINI({}, "Comunes", "OrigenQ19", "C:\\"), "C:\\");
  PonerAvisador(anterior);
  EXPECT_EQ(avisos, QStringList({u"ReadINI no recibió nombre de fichero a leer"_s,
                                 QCoreApplication::applicationName()}));
}
