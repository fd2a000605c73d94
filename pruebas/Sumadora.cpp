// La máquina de sumar: cada caso son las teclas y la cinta, la suma y el número que dejan.

#include "comunes/herramientas/Sumadora.h"

#include <gtest/gtest.h>

using herramientas::Sumadora;

namespace {

std::string Escrito(herramientas::Millonesimas valor, int decimales) {
  std::string cifras = std::to_string(valor < 0 ? -valor : valor);
  if (cifras.size() < 7) cifras.insert(0, 7 - cifras.size(), '0');
  cifras.insert(cifras.size() - 6, ".");
  const std::size_t fin = cifras.size() - 6 + static_cast<std::size_t>(decimales);
  EXPECT_EQ(std::string::npos, cifras.find_first_not_of('0', fin)) << "hay más decimales: " << cifras;
  return (valor < 0 ? "-" : "") + cifras.substr(0, fin);
}

std::string Cinta(const Sumadora& maquina) {
  constexpr std::u16string_view kSignos = u"−×÷◊≈";
  std::string texto;
  for (const auto& linea : maquina.cinta()) {
    const auto n = kSignos.find(linea.signo);
    texto += (texto.empty() ? "" : " ") + Escrito(linea.valor, linea.decimales) +
             (n == std::u16string_view::npos ? static_cast<char>(linea.signo) : "-x/S~"[n]);
  }
  return texto;
}

/// "n" cambia el signo, "<" retrocede, "I" es Intro, "d" y una cifra pone los decimales.
Sumadora::Fallo Pulsar(Sumadora& maquina, const std::string& teclas) {
  using Orden = Sumadora::Orden;
  Sumadora::Fallo fallo = Sumadora::Fallo::Ninguno;
  const std::string ordenes = "+-x/=%STnC";
  for (std::size_t i = 0; i < teclas.size(); ++i) {
    const char t = teclas[i];
    if (const auto n = ordenes.find(t); n != std::string::npos)
      fallo = maquina.orden(static_cast<Orden>(n));
    else if (t == 'I')
      fallo = maquina.intro();
    else if (t == 'd')
      fallo = maquina.ponerDecimales(teclas[++i] - '0');
    else if (t == '<')
      maquina.retroceder();
    else
      fallo = maquina.teclear(t);
  }
  return fallo;
}

}  // namespace

TEST(Sumadora, TeclasYCinta) {
  struct Caso {
    const char* teclas;
    const char* cinta;
    const char* suma;
    const char* visto;
  };
  const Caso casos[] = {
      // Suma con los signos detrás, subtotal y total; repetir la orden repite el sumando.
      {"1.5+2-", "1.50+ 2.00-", "-0.50", "2.00"},
      {"5+++S", "5.00+ 5.00+ 5.00+ 15.00S", "15.00", "15.00"},
      {"10+3-T", "10.00+ 3.00- 7.00*", "0.00", "7.00"},
      {"10+T+", "10.00+ 10.00* 10.00+", "10.00", "10.00"},
      {"10+ST4+T", "10.00+ 10.00S 10.00* 4.00+ 4.00*", "0.00", "4.00"},
      {"7n+2n-T", "-7.00+ -2.00- -5.00*", "0.00", "-5.00"},
      // Intro cierra × y ÷; si no, subtotal y después total; con la suma vacía, nada.
      {"3+II I", "3.00+ 3.00S 3.00*", "0.00", "3.00"},
      {"3x4II", "3.00x 4.00= 12.00R", "0.00", "12.00"},
      {"3+I4+I", "3.00+ 3.00S 4.00+ 7.00S", "7.00", "7.00"},
      // Productos y cocientes, en cadena y a la suma.
      {"2x3+1-T", "2.00x 3.00= 6.00+ 1.00- 5.00*", "0.00", "5.00"},
      {"2x3=+", "2.00x 3.00= 6.00R 6.00+", "6.00", "6.00"},
      {"9/2-", "9.00/ 2.00= 4.50-", "-4.50", "4.50"},
      {"10/3x3=", "10.00/ 3.00x 3.00= 10.00R", "0.00", "10.00"},
      {"2x/4=", "2.00x 2.00/ 4.00= 0.50R", "0.00", "0.50"},
      {"8+2xS=", "8.00+ 2.00x 8.00S 8.00= 16.00R", "8.00", "16.00"},
      {"2x5nx3=", "2.00x -5.00x 3.00= -30.00R", "0.00", "-30.00"},
      {"100x1.0325=", "100.00x 1.0325= 103.25R", "0.00", "103.25"},
      // Tanto por ciento de un factor, de un dividendo y de la suma.
      {"200x21%+", "200.00x 21.00% 42.00R 42.00+", "42.00", "42.00"},
      {"50/200%", "50.00/ 200.00% 25.00R", "0.00", "25.00"},
      {"80+20+21%+T", "80.00+ 20.00+ 21.00% 21.00R 21.00+ 121.00*", "0.00", "121.00"},
      // La mitad, hacia fuera del cero, también donde un binario no llega.
      {"1.005+2.675-", "1.01+ 2.68-", "-1.67", "2.68"},
      {"1.005n+", "-1.01+", "-1.01", "-1.01"},
      {"0.5x.01=", "0.50x 0.01= 0.01R", "0.00", "0.01"},
      {"1n/8=", "-1.00/ 8.00= -0.13R", "0.00", "-0.13"},
      {"1/3=", "1.00/ 3.00= 0.33R", "0.00", "0.33"},
      {"d42/3=", "2.0000/ 3.0000= 0.6667R", "0.0000", "0.6667"},
      {"d4.0050+d2", "0.0050+ 0.0050~", "0.01", "0.01"},
      // Lo tecleado: ceros delante, retroceso, borrar por pasos.
      {"007+.5+", "7.00+ 0.50+", "7.50", "0.50"},
      {"12.3<<<4+", "14.00+", "14.00", "14.00"},
      {"9+12C5+", "9.00+ 5.00+", "14.00", "5.00"},
      {"9+2x7CC3+", "9.00+ 2.00x 2.00C 3.00+", "12.00", "3.00"},
      {"9+8+C", "9.00+ 8.00+ 17.00C", "0.00", "0.00"},
      {"5C", "", "0.00", "0.00"},
      {"999999999999.99+.01-", "999999999999.99+ 0.01-", "999999999999.98", "0.01"},
      {"999999.999999x999999.999999=", "999999.999999x 999999.999999= 999999999998.00R", "0.00",
       "999999999998.00"},
  };
  for (const Caso& c : casos) {
    SCOPED_TRACE(c.teclas);
    Sumadora maquina;
    std::string teclas = c.teclas;
    std::erase(teclas, ' ');
    EXPECT_EQ(Sumadora::Fallo::Ninguno, Pulsar(maquina, teclas));
    EXPECT_EQ(c.cinta, Cinta(maquina));
    EXPECT_EQ(c.suma, Escrito(maquina.suma(), maquina.decimales()));
    EXPECT_EQ(c.visto, Escrito(maquina.valor(), maquina.decimales()));
  }
}

TEST(Sumadora, UnaOrdenQueFallaNoCambiaNada) {
  using Fallo = Sumadora::Fallo;
  struct Caso {
    const char* antes;
    const char* falla;
    Fallo fallo;
    const char* despues;  // teclas que siguen
    const char* cinta;
  };
  const Caso casos[] = {
      {"999999999999+.99+.01", "+", Fallo::Desbordamiento, "-", "999999999999.00+ 0.99+ 0.01-"},
      {"999999999999+1", "+", Fallo::Desbordamiento, "-", "999999999999.00+ 1.00-"},
      {"999999999999n+1", "-", Fallo::Desbordamiento, "+", "-999999999999.00+ 1.00+"},
      {"999999999999x2", "=", Fallo::Desbordamiento, "C1=", "999999999999.00x 1.00= 999999999999.00R"},
      {"999999999999x999999999999", "x", Fallo::Desbordamiento, "C1-",
       "999999999999.00x 1.00= 999999999999.00-"},
      {"1/.000001x999999999999", "%", Fallo::Desbordamiento, "C", "1.00/ 0.000001x"},
      {"7+10/0", "=", Fallo::DivisionPorCero, "4=T", "7.00+ 10.00/ 4.00= 2.50R 7.00*"},
      {"10/0", "+", Fallo::DivisionPorCero, "5+", "10.00/ 5.00= 2.00+"},
      {"10/0", "x", Fallo::DivisionPorCero, "x3=", "10.00/ 10.00x 3.00= 30.00R"},
      {"10/0", "%", Fallo::DivisionPorCero, "", "10.00/"},
      {"2x", "=", Fallo::FaltaNumero, "", "2.00x"},
      {"2x", "-", Fallo::FaltaNumero, "", "2.00x"},
      {"5+3", "T", Fallo::NumeroSuelto, "-T", "5.00+ 3.00- 2.00*"},
      {"5+3", "I", Fallo::NumeroSuelto, "+I", "5.00+ 3.00+ 8.00S"},
      {"2x3", "S", Fallo::NumeroSuelto, "=", "2.00x 3.00= 6.00R"},
      {"5", "%", Fallo::SinBase, "", ""},
      {"123456789012", "3", Fallo::NoCabe, "+", "123456789012.00+"},
      {"1.123456", "7", Fallo::NoCabe, "<<<<+", "1.12+"},
      {"1.", ".", Fallo::NoCabe, "5+", "1.50+"},
  };
  for (const Caso& c : casos) {
    SCOPED_TRACE(std::string(c.antes) + " " + c.falla);
    Sumadora maquina;
    EXPECT_EQ(Fallo::Ninguno, Pulsar(maquina, c.antes));
    EXPECT_EQ(c.fallo, Pulsar(maquina, c.falla));
    EXPECT_EQ(Fallo::Ninguno, Pulsar(maquina, c.despues));
    EXPECT_EQ(c.cinta, Cinta(maquina));
  }
}
