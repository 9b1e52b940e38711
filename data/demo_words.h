#pragma once

#include <array>
#include <string_view>

// What the invented shop's year is made of. The surnames are put together from roots that nobody bears;
// cities and their post codes are real, streets are of the kind every town has.
namespace data::words {

using Word = std::string_view;

inline constexpr auto kGivenNames = std::to_array<Word>(
    {"Aleksa",   "Ana",    "Bojan",    "Bogdan", "Danica",  "Dejan",  "Dragana", "Dusan",
     "Filip",    "Goran",  "Gordana",  "Igor",   "Ivana",   "Jasna",  "Jelena",  "Jovan",
     "Katarina", "Lazar",  "Ljiljana", "Luka",   "Maja",    "Marija", "Marko",   "Milan",
     "Milena",   "Milica", "Mirko",    "Nada",   "Nemanja", "Nikola", "Olga",    "Petar",
     "Radmila",  "Sanja",  "Slavica",  "Stefan", "Tamara",  "Uros",   "Vesna",   "Zoran"});
inline constexpr auto kSurnameRoots = std::to_array<Word>(
    {"Bresk",  "Cvorn",  "Dubrel", "Grmal", "Jaseln", "Kremal", "Ledvan", "Mirkal",  "Orlent", "Plavst",
     "Rastel", "Sivolj", "Tresan", "Udovr", "Vidrel", "Zelkan", "Zukval", "Hrastal", "Kolvan", "Lipstr"});
inline constexpr auto kSurnameEndings = std::to_array<Word>({"ic", "ovic", "evic", "ac", "inski", "ov"});
inline constexpr auto kNickNames =
    std::to_array<Word>({"Beli", "Cale", "Kum", "Mali", "Profa", "Seka", "Sef", "Zuca"});

struct City {
    Word name, zip, area;
};
inline constexpr auto kCities = std::to_array<City>({{"Beograd", "11000", "011"},
                                                     {"Beograd", "11070", "011"},
                                                     {"Beograd", "11080", "011"},
                                                     {"Novi Sad", "21000", "021"},
                                                     {"Nis", "18000", "018"},
                                                     {"Kragujevac", "34000", "034"},
                                                     {"Subotica", "24000", "024"},
                                                     {"Pancevo", "26000", "013"},
                                                     {"Cacak", "32000", "032"},
                                                     {"Zrenjanin", "23000", "023"}});
inline constexpr auto kStreets = std::to_array<Word>(
    {"Bagremova", "Bele vode", "Cvetna",   "Dunavska", "Glavna",   "Gradska", "Jablanova",
     "Kestenova", "Lipova",    "Livadska", "Mlinska",  "Nova",     "Poljska", "Prvomajska",
     "Ribarska",  "Sumska",    "Suncana",  "Topolska", "Visnjeva", "Zelena"});

inline constexpr auto kFirmWords = std::to_array<Word>(
    {"Zelenkov", "Trimolin", "Kvarnik", "Brezolit", "Mirodom", "Stepovita", "Oblakom", "Drvoprom", "Vodotok",
     "Iskromat", "Planinka", "Ravnica", "Sitoplast", "Tihovod", "Lukovit", "Pernatka"});
inline constexpr auto kFirmTrades =
    std::to_array<Word>({"Gradnja", "Trans", "Knjigovodstvo", "Apoteka", "Stamparija", "Promet",
                         "Inzenjering", "Pekara", "Optika", "Dizajn", "Agrar", "Stomatologija"});
inline constexpr auto kFirmForms =
    std::to_array<Word>({" d.o.o.", " d.o.o.", " d.o.o.", " PR", " SZR", " a.d."});
inline constexpr auto kClientComments = std::to_array<Word>(
    {"Zove posle 17 h.", "Placa virmanom, rok 15 dana.", "Dolazi licno po racunar.",
     "Racune slati i elektronskom postom.", "Ne instalirati nista bez dogovora.\nTrazi ponudu unapred.",
     "Redovan klijent, popust po dogovoru."});

inline constexpr auto kOfficePlaces = std::to_array<Word>(
    {"Racunovodstvo", "Magacin", "Prijem", "Direktor", "Prodaja", "Server", "Laptop", "Kancelarija"});
inline constexpr auto kHomePlaces =
    std::to_array<Word>({"Kucni racunar", "Laptop", "Racunar za igre", "Decji racunar"});

struct Model {
    Word processor, board, cache, memory, video, system;
};
inline constexpr auto kModels = std::to_array<Model>(
    {{"Intel Core i3-12100F", "MSI PRO H610M-E DDR4", "12 MB", "8 GB DDR4", "GeForce GT 1030",
      "Windows 11 Home"},
     {"Intel Core i5-12400F", "ASUS PRIME B660M-K D4", "18 MB", "16 GB DDR4", "GeForce GTX 1650",
      "Windows 11 Home"},
     {"Intel Core i5-14400", "ASUS PRIME B760M-A WIFI", "20 MB", "32 GB DDR5", "Intel UHD 730",
      "Windows 11 Pro"},
     {"Intel Core i5-8400", "Gigabyte B360M DS3H", "9 MB", "8 GB DDR4", "Intel UHD 630", "Windows 10 Pro"},
     {"Intel Core i7-4790", "ASUS H97-PLUS", "8 MB", "16 GB DDR3", "GeForce GTX 960", "Windows 10 Home"},
     {"Intel Core i5-1235U", "Laptop", "12 MB", "16 GB DDR4", "Intel Iris Xe", "Windows 11 Home"},
     {"Intel Pentium Gold G6405", "ASRock H510M-HDV", "4 MB", "8 GB DDR4", "Intel UHD 610", "Windows 10 Pro"},
     {"AMD Ryzen 5 5500", "ASUS PRIME A520M-K", "16 MB", "16 GB DDR4", "Radeon RX 6600", "Windows 11 Home"},
     {"AMD Ryzen 5 7600", "ASRock B650M Pro RS", "32 MB", "32 GB DDR5", "GeForce RTX 4060", "Windows 11 Pro"},
     {"AMD Ryzen 7 7800X3D", "MSI MAG B650 TOMAHAWK WIFI", "96 MB", "32 GB DDR5", "Radeon RX 9070 XT",
      "Windows 11 Home"},
     {"AMD Ryzen 3 3200G", "Gigabyte B450M DS3H", "4 MB", "8 GB DDR4", "Radeon Vega 8", "Windows 10 Home"},
     {"AMD Ryzen 5 5500U", "Laptop", "8 MB", "8 GB DDR4", "Radeon Graphics", "Debian 12"}});
inline constexpr auto kDisks =
    std::to_array<Word>({"SSD 240 GB", "SSD 480 GB", "SSD NVMe 500 GB", "SSD NVMe 1 TB", "HDD 1 TB",
                         "SSD 240 GB i HDD 1 TB", "SSD NVMe 1 TB i HDD 2 TB"});
inline constexpr auto kPowerSupplies =
    std::to_array<Word>({"450 W", "500 W", "550 W Bronze", "650 W Gold", "750 W Gold", "Fabricko"});
inline constexpr auto kMonitors = std::to_array<Word>(
    {"Dell P2419H", "LG 24MR400-B", "AOC 24G2SPU", "Philips 223V5", "Samsung S24R350", "nema"});
inline constexpr auto kPrinters = std::to_array<Word>(
    {"HP LaserJet M110w", "Canon PIXMA TS3450", "Epson EcoTank L3250", "Brother HL-L2400DW"});
inline constexpr auto kInternet =
    std::to_array<Word>({"Kablovski modem", "Optika", "Ruter 4G", "VDSL modem", "nema"});
inline constexpr auto kComputerComments =
    std::to_array<Word>({"Kuciste bez jedne nogice.", "Nalepnica servisa sa strane.", "Lozinka kod vlasnika.",
                         "Disk je particionisan: sistem i podaci.\nPodatke ne dirati.",
                         "Garancija jos traje, ne otvarati kuciste.", "BIOS azuriran."});

inline constexpr auto kFaults = std::to_array<Word>(
    {"Ne pali se.", "Gasi se sam posle desetak minuta.", "Radi veoma sporo.",
     "Plavi ekran pri podizanju sistema.", "Jak zvuk ventilatora.", "Nema slike na monitoru.",
     "Ne prepoznaje disk.", "Gubi bezicnu mrezu.", "Prosuta tecnost po tastaturi.",
     "Iskacu reklame u pregledacu.", "Stampac gura vise listova.", "Zeli vise memorije i SSD.",
     "Puna provera pred godisnji odmor.", "Baterija ne drzi.", "Ne cita USB."});
inline constexpr auto kOutcomes = std::to_array<Word>(
    {"Otklonjeno, testirano dva sata.", "Zamenjeno i provereno.", "Ocisceno, temperature uredne.",
     "Sistem ponovo instaliran, podaci vraceni.", "Podeseno kod korisnika.",
     "Nema greske, vraceno korisniku.", "Preporucena zamena u narednih sest meseci."});

// Euro, by the place of the kind of work in service_types.txt; place 0 stands for kinds that came later.
inline constexpr auto kPriceOfKind =
    std::to_array<int>({20, 15, 10, 20, 15, 30, 15, 25, 60, 25, 15, 40, 55, 35, 30, 20, 30});

}  // namespace data::words
