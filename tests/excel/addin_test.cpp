int main_placeholder_addin;
