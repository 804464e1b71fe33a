#include "console/Captions.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr BuiltInCaption kBuiltIn[] = {
    {3000, "Nya larm"},
    {3001, "Gamla larm"},
    {3002, "System Logg"},
    {3003, "Debug"},
    {3004, "ID Koder"},
    {3005, "Karaktärer"},
    {3006, "Händelsetyper"},
    {3007, "Portar och översättningar"},
    {3008, "Larmtext"},
    {3020, "&Arkiv"},
    {3021, "&Larm"},
    {3022, "&Redigera"},
    {3023, "&Visa"},
    {3024, "Si&mulera"},
    {3025, "&Hjälp"},
    {3030, "Logga &in..."},
    {3031, "Logga &ut"},
    {3032, "&Avsluta alla larm"},
    {3033, "&Stäng av ljudsignal"},
    {3034, "&Visa alltid sista larmet"},
    {3035, "Ställ &klockan i GoogolT1"},
    {3036, "Skriv &ut"},
    {3037, "&Inställningar..."},
    {3038, "&Avsluta"},
    {3039, "&Larm..."},
    {3040, "&100 larm"},
    {3041, "&LoadEvents (pack and load)"},
    {3042, "&System Logg"},
    {3043, "&Debug"},
    {3044, "&ID Koder"},
    {3045, "&Karaktärer"},
    {3046, "&Händelsetyper"},
    {3047, "&Karta"},
    {3048, "Visa Nya Larm &automatiskt"},
    {3049, "&Uppdatera ID och Karaktär"},
    {3050, "&Utskriftstypsnitt..."},
    {3051, "&Välj alla"},
    {3052, "Om &Nordkeep"},
    {3100, "&Visa kommentarer..."},
    {3101, "&Kopiera markerade larm"},
    {3102, "&Skriv ut markerade larm"},
    {3103, "&Avsluta markerade larm"},
    {3104, "&Arkivera markerade larm"},
    {3105, "Redigera översättningsfil..."},
    {3106, "Under arbete"},
    {3107, "I drift"},
    {3108, "&Endast loggning en viss period..."},
    {3109, "Endast loggning (dygnet runt)"},
    {3110, "Endast loggning i %1 minuter"},
    {3111, "Visa kommentarer..."},
    {3112, "Redigera objektinformation..."},
    {3113, "Redigera objektspecifik karaktärsinformation..."},
    {3114, "Redigera objectsspecifik händelsetypinformation..."},
    {3115, "Återställ Alivetest tid"},
    {3150, "Avsluta alla"},
    {3151, "Avsluta larm"},
    {3152, "Tysta ljud"},
    {3153, "Visa sista"},
    {3154, "Skriv ut"},
    {3155, "Kommentarer"},
    {3156, "Redigera ID-koder"},
    {3157, "Redigera karaktärer"},
    {3158, "Service"},
    {3159, "Uppdatera"},
    {3160, "Karta"},
    {3200, "Date"},
    {3201, "Time"},
    {3202, "Description"},
    {3210, "Objekt"},
    {3211, "Alivetest intervall"},
    {3212, "Last Event"},
    {3213, "Alivetest expires"},
    {3214, "Map name"},
    {3215, "Customer"},
    {3216, "Krav på CLID"},
    {3217, "Återställning objekt kod"},
    {3218, "Alivetest intervall"},
    {3219, "Alivetest 2 expire"},
    {3220, "Kod"},
    {3221, "Prio"},
    {3222, "Karaktär"},
    {3223, "Återställer karaktär"},
    {3224, "Avsnitt"},
    {3225, "Kod"},
    {3226, "Händelse"},
    {3227, "Återställning/klass"},
    {3228, "Prio"},
    {3250, "Larmkommentarer"},
    {3251, "Objektkommentarer"},
    {3252, "&Skicka"},
    {3253, "Avsl&uta larm"},
    {3254, "Skriv ut &log"},
    {3255, "Skriv ut &info"},
    {3256, "&Karta"},
    {3257, "&Återgå"},
    {3258, "&Spara"},
    {3259, "Skicka till"},
    {3260, "Kommentarer"},
    {3261, "Karaktärsinformation"},
    {3262, "Objektinformation"},
    {3263, "Kort kommentar"},
    {3264, "Ny kommentar"},
    {3265, "%1 av %2 tecken"},
    {3266, "Kommentaren kunde inte sparas."},
    {3267, "Larmet har ändrats av någon annan."},
    {3300, "Zoom"},
    {3301, "Kartan %1 kan inte visas."},
    {3320, "Bevaka portar"},
    {3321, "Skicka"},
    {3322, "Ignorera svar"},
    {3323, "Visa sista raden"},
    {3324, "Hexkod"},
    {3325, "Spara"},
    {3326, "Rensa"},
    {3327, "Port"},
    {3328, "Meddelande"},
    {3350, "&Ja"},
    {3351, "&Nej"},
    {3352, "Stäng"},
    {3353, "Endast loggning"},
    {3354, "Från"},
    {3355, "Till"},
    {3356, "Under &perioden"},
    {3357, "&Från nu till sluttiden"},
    {3358, "Vill du avsluta Nordkeep? Inga larm tas emot när programmet är avslutat."},
    {3359, "Vill du avsluta den här klienten?"},
    {3400, "Nytt"},
    {3401, "Kommenterat"},
    {3402, "Nytt, väntar återställning"},
    {3403, "Kommenterat, väntar återställning"},
    {3404, "Återställt"},
    {3405, "Avslutat"},
    {3410, "I drift"},
    {3411, "Endast loggning till %1"},
    {3412, "Endast loggning %1 till %2"},
    {3413, "Endast loggning dygnet runt"},
    {3420, "Alivetest har löpt ut"},
    {3421, "Alivetest 2 har löpt ut"},
    {3422, "Ja"},
    {3423, "Nej"},
    {3424, "Upprepning"},
    {3430, "Fel"},
    {3431, "Information"},
    {3432, "Varning"},
    {3433, "Larm"},
    {3500, "Nordkeep startat, version"},
    {3501, "Datamapp"},
    {3502, "Fristående"},
    {3503, "Server"},
    {3504, "Klient"},
    {3505, "Tjänst"},
    {3506, "Nordkeep avslutas"},
    {3510, "Larm borttagna vid start på grund av maxgränsen:"},
    {3511, "Larm arkiverade vid start på grund av ålder:"},
    {3512, "Larm arkiverade på grund av ålder:"},
    {3513, "Händelsefiler som inte kunde läsas:"},
    {3514, "Kunde inte lyssna på nätverksport"},
    {3515, "Kunde inte styra reläet"},
    {3516, "Kunde inte skriva ut"},
    {3517, "Kunde inte spela larmljudet"},
    {3550, "Server, %1 anslutna klienter"},
    {3551, "Ej inloggad"},
    {3552, "Inloggad: %1"},
    {3553, "Ingen kontakt med servern - listorna visar inte aktuellt läge"},
    {3554, "Portarna är avstängda - inga larm tas emot"},
    {3555, "Port %1 är tystad i ytterligare %2 sekunder"},
    {3556, "%1 nya larm döljs av filtret"},
    {3557, "Nya: %1"},
    {3558, "Gamla: %1"},
    {3559, "Äldsta obehandlat: %1"},
    {3560, "&Visa Nordkeep"},
    {3561, "Sök i listan (Ctrl+F)"},
    {3562, "Visa alla"},
    {3563, "Simulera larm"},
    {3564, "Läser in händelser..."},
};

}  // namespace

std::span<const BuiltInCaption> BuiltInCaptions() {
    return kBuiltIn;
}

Text FillPlaces(TextView pattern, std::span<const TextView> values) {
    Text filled;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool isPlace =
            pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] >= '1' &&
            pattern[at + 1] < static_cast<char>('1' + std::min<std::size_t>(values.size(), 9));
        if (isPlace) {
            filled += values[static_cast<std::size_t>(pattern[++at] - '1')];
        } else {
            filled += pattern[at];
        }
    }
    return filled;
}

Text Captions::operator()(int number) const {
    if (language_.Has(number)) {
        if (Text text = language_.GetLanguageText(number); !text.empty()) return text;
    }
    const auto at = std::ranges::lower_bound(kBuiltIn, number, {}, &BuiltInCaption::number);
    return at != std::end(kBuiltIn) && at->number == number ? FromUtf8(at->utf8) : Text{};
}

Text Captions::operator()(int number, std::initializer_list<TextView> values) const {
    return FillPlaces((*this)(number), values);
}

}  // namespace nordkeep
