#pragma once

#include <sigc++/sigc++.h>

#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/typelib/Convert.h"
#include "frame/typelib/TypeLibrary.h"

namespace quillbox {

// The binder: a class is described by a chain of rows in published order, each naming a C++ member, or a
// typed lambda or function whose first parameter is the object. Parameter and result types come from the
// signature.
//
//     return Describe<Topics>("Topics", "Ordered list of the topics of a project.")
//         .creatable()
//         .read("Item", &Topics::Item, {"Key"}, "The topic; none for an unknown key.").isDefault()
//         .done();

// A parameter's name, with its default where it may be left out.
struct Param {
    Param(const char* n) : name(n) {}
    Param(const char* n, Value d) : name(n), optional(true), defaultValue(std::move(d)) {}
    std::string name;
    bool optional = false;
    Value defaultValue;
};
inline Param optional(const char* name) { return {name, Value()}; }

using Params = std::vector<Param>;

namespace detail {

template <class... A>
struct List {};

template <class F>
struct Signature : Signature<decltype(&F::operator())> {};
template <class R, class T, class... A>
struct Signature<R (T::*)(A...)> {
    using Result = std::decay_t<R>;
    using Owner = T;
    using Parameters = List<A...>;
};
template <class R, class T, class... A>
struct Signature<R (T::*)(A...) const> : Signature<R (T::*)(A...)> {};
template <class R, class... A>
struct Signature<R (*)(A...)> {
    using Result = std::decay_t<R>;
    using Parameters = List<A...>;
};

template <class A>
inline constexpr bool kByRef = std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

template <class A>
ParameterInfo parameter(const Param& param) {
    return {param.name, typeName<std::decay_t<A>>(), kByRef<A>, param.optional, param.defaultValue};
}

template <class... A, std::size_t... I>
std::vector<ParameterInfo> parameters(const Params& params, std::index_sequence<I...>) {
    return {parameter<A>(params.at(I))...};
}

// Converts the arguments, runs the call, and takes by-reference arguments back.
template <class... A, class F, std::size_t... I>
Value invoke(F&& call, Arguments& arguments, std::index_sequence<I...>) {
    std::tuple<std::decay_t<A>...> converted{Convert<std::decay_t<A>>::From(arguments[I])...};
    const auto takeBack = [&] {
        ((kByRef<A> ? void(arguments[I] = Convert<std::decay_t<A>>::To(std::get<I>(converted))) : void()),
         ...);
    };
    using Result = decltype(call(std::get<I>(converted)...));
    if constexpr (std::is_void_v<Result>) {
        call(std::get<I>(converted)...);
        takeBack();
        return Value::None();
    } else {
        Value result = Convert<std::decay_t<Result>>::To(call(std::get<I>(converted)...));
        takeBack();
        return result;
    }
}

template <class A>
using EventArgument = std::remove_cvref_t<A>;

template <class... A, std::size_t... I>
void raise(const EventSink& sink, std::index_sequence<I...>, A&... arguments) {
    Arguments values{Convert<EventArgument<A>>::To(arguments)...};
    sink(values);
    [[maybe_unused]] const auto takeBack = [](auto& target, const Value& value) {
        using T = std::remove_reference_t<decltype(target)>;
        if constexpr (!std::is_const_v<T>) target = Convert<std::remove_cv_t<T>>::From(value);
    };
    (takeBack(arguments, values[I]), ...);
}

}  // namespace detail

template <class T>
class Describe {
  public:
    Describe(const char* name, const char* help) {
        mInfo.name = name;
        mInfo.help = help;
    }

    Describe& creatable() {
        mInfo.creatable = true;
        mInfo.create = [] { return make<T>(); };
        return *this;
    }
    Describe& creatable(std::function<Ref<Object>()> create) {
        mInfo.creatable = true;
        mInfo.create = std::move(create);
        return *this;
    }
    // A class of the platform.
    Describe& unpublished() {
        mInfo.published = false;
        return *this;
    }

    // A plain public data member, readable and writable.
    template <class F, class Owner>
    Describe& field(const char* name, F Owner::*member, const char* help) {
        return add(name, MemberKind::Property, typeName<F>(), {}, help)
            .reads([member](Object& o, Arguments&) { return Convert<F>::To(as(o).*member); })
            .writes([member](Object& o, Arguments&, const Value& v) { as(o).*member = Convert<F>::From(v); });
    }

    // An object that is always there: it may be replaced, but not by none.
    template <class F, class Owner>
    Describe& part(const char* name, Ref<F> Owner::*member, const char* help) {
        field(name, member, help);
        const std::string described = name;
        return writes([member, described](Object& o, Arguments&, const Value& v) {
            auto object = Convert<Ref<F>>::From(v);
            if (!object) throw AutomationError("'" + described + "' cannot be none");
            as(o).*member = std::move(object);
        });
    }

    template <class Get>
    Describe& read(const char* name, Get get, const char* help) {
        return read(name, get, {}, help);
    }
    template <class Get>
    Describe& read(const char* name, Get get, const Params& params, const char* help) {
        return reader(name, MemberKind::PropertyRead, get, params, help);
    }

    template <class Get, class Set>
    Describe& property(const char* name, Get get, Set set, const char* help) {
        return property(name, get, set, {}, help);
    }
    // The setter takes the parameters and then the value.
    template <class Get, class Set>
    Describe& property(const char* name, Get get, Set set, const Params& params, const char* help) {
        reader(name, MemberKind::Property, get, params, help);
        return writes(writer(set));
    }

    // The setter takes the parameters, if any, and then the value.
    template <class Set>
    Describe& write(const char* name, Set set, const char* help) {
        return write(name, set, {}, help);
    }
    template <class Set>
    Describe& write(const char* name, Set set, const Params& params, const char* help) {
        return writerAlone(name, set, params, help, typename Shape<Set>::Parameters{});
    }

    template <class Call>
    Describe& method(const char* name, Call call, const Params& params, const char* help) {
        return reader(name, MemberKind::Method, call, params, help);
    }
    template <class Call>
    Describe& method(const char* name, Call call, const char* help) {
        return method(name, call, {}, help);
    }

    Describe& isDefault() {
        mInfo.defaultMember = mInfo.members.back().name;
        return *this;
    }
    // The last member belongs to an interface that the class implements.
    Describe& ofInterface() {
        mInfo.members.back().listed = false;
        return *this;
    }

    // The enumeration of a collection, in list order.
    template <class Items>
    Describe& enumerates(Items items) {
        mInfo.items = [items](Object& o) {
            std::vector<Value> values;
            for (const auto& item : call(items, as(o)))
                values.push_back(Convert<std::decay_t<decltype(item)>>::To(item));
            return values;
        };
        add("NewEnum", MemberKind::PropertyRead, "Variant", {}, "Enumerates the items in list order.");
        const auto list = mInfo.items;
        return reads([list](Object& o, Arguments&) { return Convert<std::vector<Value>>::To(list(o)); });
    }

    template <class... A>
    Describe& event(const char* name, int id, sigc::signal<void(A...)> T::*signal,
                    const Params& params = {}) {
        auto described = detail::parameters<A...>(params, std::index_sequence_for<A...>{});
        mInfo.events.push_back(
            {name, id, std::move(described), [signal](Object& o, EventSink sink) -> Disconnect {
                 sigc::connection connection = (as(o).*signal).connect([sink](A... arguments) {
                     detail::raise<std::remove_reference_t<A>...>(sink, std::index_sequence_for<A...>{},
                                                                  arguments...);
                 });
                 return [connection]() mutable { connection.disconnect(); };
             }});
        return *this;
    }

    ClassInfo done() { return std::move(mInfo); }

  private:
    static T& as(Object& object) {
        if (auto* found = dynamic_cast<T*>(&object)) return *found;
        throw AutomationError("An object of class '" + std::string(object.ClassName()) +
                              "' has no such member");
    }

    template <class F, class... A>
    static decltype(auto) call(F f, T& object, A&&... arguments) {
        if constexpr (std::is_member_function_pointer_v<F>) {
            return (object.*f)(std::forward<A>(arguments)...);
        } else {
            return f(object, std::forward<A>(arguments)...);
        }
    }

    // The parameters of a member pointer, or those of a lambda behind the object.
    template <class F>
    struct Shape {
        template <class First, class... A>
        static detail::List<A...> tail(detail::List<First, A...>);
        using Signature = detail::Signature<F>;
        using Result = typename Signature::Result;
        static auto parametersOf() {
            if constexpr (std::is_member_function_pointer_v<F>) {
                return typename Signature::Parameters{};
            } else {
                return tail(typename Signature::Parameters{});
            }
        }
        using Parameters = decltype(parametersOf());
    };

    Describe& add(const char* name, MemberKind kind, std::string type, std::vector<ParameterInfo> params,
                  const char* help) {
        MemberInfo member;
        member.name = name;
        member.kind = kind;
        member.type = std::move(type);
        member.params = std::move(params);
        member.help = help;
        mInfo.members.push_back(std::move(member));
        return *this;
    }
    Describe& reads(std::function<Value(Object&, Arguments&)> read) {
        mInfo.members.back().read = std::move(read);
        return *this;
    }
    Describe& writes(std::function<void(Object&, Arguments&, const Value&)> write) {
        mInfo.members.back().write = std::move(write);
        return *this;
    }

    template <class F, class... A>
    Describe& readerOf(const char* name, MemberKind kind, F f, const Params& params, const char* help,
                       detail::List<A...>) {
        using Indexes = std::index_sequence_for<A...>;
        add(name, kind, typeName<typename Shape<F>::Result>(), detail::parameters<A...>(params, Indexes{}),
            help);
        return reads([f](Object& o, Arguments& arguments) {
            const auto bound = [&](auto&... a) -> decltype(auto) { return call(f, as(o), a...); };
            return detail::invoke<A...>(bound, arguments, Indexes{});
        });
    }
    template <class F>
    Describe& reader(const char* name, MemberKind kind, F f, const Params& params, const char* help) {
        return readerOf(name, kind, f, params, help, typename Shape<F>::Parameters{});
    }

    template <class F, class... A>
    static auto writerOf(F f, detail::List<A...>) {
        return [f](Object& o, Arguments& arguments, const Value& value) {
            Arguments all = arguments;
            all.push_back(value);
            const auto bound = [&](auto&... a) -> decltype(auto) { return call(f, as(o), a...); };
            detail::invoke<A...>(bound, all, std::index_sequence_for<A...>{});
        };
    }
    template <class F>
    static auto writer(F f) {
        return writerOf(f, typename Shape<F>::Parameters{});
    }

    template <class F, class... A>
    Describe& writerAlone(const char* name, F f, const Params& params, const char* help,
                          detail::List<A...> all) {
        // The value's description is dropped again: it is the type of the member.
        auto named = params;
        named.push_back(name);
        auto described = detail::parameters<A...>(named, std::index_sequence_for<A...>{});
        auto type = described.back().type;
        described.pop_back();
        return add(name, MemberKind::PropertyWrite, std::move(type), std::move(described), help)
            .writes(writerOf(f, all));
    }

    ClassInfo mInfo;
};

// The five members that every collection has, in published order.
template <class T, class Adder>
Describe<T>& collectionMembers(Describe<T>& describe, const char* itemHelp, Adder add) {
    return describe.read("Item", &T::Item, {"Key"}, itemHelp)
        .isDefault()
        .method("Remove", &T::Remove, {"Key"},
                "Removes an item by position or key; fails for an unknown one.")
        .method("Add", add, {"Item", optional("Key"), optional("Before"), optional("After")},
                "Adds an item, at the end unless Before or After (a position or key) is given. A key that is "
                "taken fails.")
        .read(
            "Count", [](T& list) { return list.Count(); }, "Number of items.")
        .enumerates([](T& list) { return list.Items(); });
}

}  // namespace quillbox
