int main_placeholder_send;
