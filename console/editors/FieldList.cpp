#include "console/editors/FieldList.h"

namespace nordkeep {

DescribedGroup FieldGroup(int caption, std::initializer_list<ListedField> fields) {
    DescribedGroup group{.caption = {.number = caption, .own = {}}};
    for (const ListedField& field : fields) {
        DescribedKey key{.section = {}, .key = field.name, .control = field.control};
        key.choices = field.choices;
        key.caption.number = field.caption;
        key.help.number = field.help;
        key.when = AppliesWhen::Now;
        group.keys.push_back(std::move(key));
    }
    return group;
}

}  // namespace nordkeep
